// The single AppOptions record and its copy into the core's display rules.
#include "app/shell/options.h"

#include "fl/expr/numbers.h"

namespace app {

AppOptions& options() {
    static AppOptions o;
    return o;
}

void applyDisplaySettings() {
    fl::DisplaySettings& d = fl::displaySettings();
    d.decimalComma = options().komma;
    d.rounding = options().rund;
    d.oneStepAtATime = options().trinvis;
}

} // namespace app
