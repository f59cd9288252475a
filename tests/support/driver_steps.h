#pragma once

#include <QtGlobal>

#include <algorithm>

namespace test {

/// So many steps of a random driver, or as many as the environment asks for when those are more.
inline int driverSteps(int usual)
{
    return std::max(usual, qEnvironmentVariableIntValue("KYR_DRIVER_STEPS"));
}

} // namespace test
