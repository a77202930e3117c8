#include "core/platform.h"

namespace core::platform {

void wantNoKeyboard(quintptr) {}

} // namespace core::platform
