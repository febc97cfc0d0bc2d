// The single AppOptions record.
#include "app/options.h"

namespace app {

AppOptions& options() {
    static AppOptions o;
    return o;
}

} // namespace app
