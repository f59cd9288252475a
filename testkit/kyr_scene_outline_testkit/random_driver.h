#pragma once

#include <kyr_scene_outline_testkit/export.h>
#include <kyr_scene_outline_testkit/scene_under_test.h>

#include <string>

namespace kyr::testkit {

/// Drives two browsers and the editor's side of fresh scenes at random, and compares them after
/// every step with a plain reference: the same objects selected in the editor and in both browsers,
/// in the same order where one follows the other, no more writes than changes, the right hover
/// marks, and undo that restores.
///
/// `steps` steps are made in sequences of 200, each on a scene of its own from `seed` on.
/// Returns an empty text, or the seed and the fewest steps that still fail, one a line, which are
/// the same on every run. Needs a QCoreApplication.
KYR_TESTKIT_EXPORT std::string firstFailure(const SceneFactory& makeScene, unsigned seed,
                                            int steps);

} // namespace kyr::testkit
