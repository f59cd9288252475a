#pragma once

#include <QSaveFile>
#include <QString>

#include <functional>

namespace editor {

/// Told how far writing got, from 0 to 1; answers false to stop it.
using WriteProgress = std::function<bool(double)>;

/// Thrown where a scene cannot be written: the bare reason.
struct WriteFailure
{
    QString reason;
};

/// The file that a scene is written to, beside the one of its name, whose place it takes in
/// `commit`. Without that, or when anything fails, the old file stays as it was.
class SceneOutput
{
public:
    /// Throws `WriteFailure`, as all of its functions do.
    SceneOutput(const QString& path, WriteProgress progress);

    /// Every byte, or a failure.
    void write(const void* data, std::size_t size);
    /// How much `write` will be given from here on, and which part of the whole work that is.
    void expect(double bytes, double shareBefore);
    /// Throws when the work is to stop.
    void report(double share);
    /// Returns when the bytes are on the disk under the file's name.
    void commit();

private:
    [[noreturn]] void fail();

    QSaveFile m_file;
    WriteProgress m_progress;
    double m_expected = 0;
    double m_shareBefore = 0;
    double m_written = 0;
};

} // namespace editor
