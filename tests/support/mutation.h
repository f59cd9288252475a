#pragma once

#include <QByteArray>
#include <QString>

#include <random>

namespace test {

/// Changes some bytes: other bits, extreme numbers, blocks that are missing, doubled or swapped,
/// an early end, numbers in a text that become other numbers.
void mutate(QByteArray& bytes, std::mt19937& random);

/// Copies the file, mutated, and the small files beside it as they are. Returns the copy's path.
QString copyMutated(const QString& original, const QString& folder, std::mt19937& random);

} // namespace test
