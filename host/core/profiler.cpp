#include "profiler.h"

namespace vex::Profiler {

HookTable g_hooks;

} // namespace vex::Profiler
