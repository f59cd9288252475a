#pragma once

#include <kyr_scene_outline_testkit/export.h>
#include <kyr_scene_outline_testkit/scene_under_test.h>

#include <string>
#include <vector>

namespace kyr::testkit {

/// One thing that the browser relies on.
struct ContractCheck
{
    /// Of the interface and of what it promises, such as "IAssetModel/indexFindsEveryRow".
    std::string name;
    /// Empty when a fresh scene keeps the promise, else what it did instead.
    std::function<std::string(SceneUnderTest&)> violation;
};

/// All checks of `IAssetModel` and of `IAssetSelection`, to be run one by one on scenes of their
/// own.
KYR_TESTKIT_EXPORT const std::vector<ContractCheck>& contractChecks();

/// Runs all checks; one line for each that fails, empty when all is well. Needs a QCoreApplication.
KYR_TESTKIT_EXPORT std::string contractViolations(const SceneFactory& makeScene);

} // namespace kyr::testkit
