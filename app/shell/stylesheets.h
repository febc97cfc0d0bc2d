// The raw stylesheet texts, tokens unfilled. Only the theme reads these.
#pragma once

namespace app {

const char* appStyleTemplate();
const char* documentStyleTemplate();

}  // namespace app
