#include "import_process.h"

#include "scene_stream_reader.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QRegularExpression>

#include <csignal>
#include <unistd.h>

namespace editor {

namespace {

constexpr int startTimeout = 10000;
constexpr int pollInterval = 20;
constexpr int endTimeout = 2000;
constexpr int mostErrorText = 1 << 16;
// Of the machine's memory. An object takes several times what the stream has of it.
constexpr qint64 streamPart = 16;
// What is left is for building the document.
constexpr double importShare = 0.95;

QString tr(const char* text)
{
    return QCoreApplication::translate("editor::SceneImport", text);
}

QString importerProgram()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/scene_importer");
}

qint64 mostStreamBytes()
{
    return qint64(sysconf(_SC_PHYS_PAGES)) * sysconf(_SC_PAGESIZE) / streamPart;
}

/// The output of the process, as far as it is there, and then as it comes. Ends with the process,
/// or when it is to be stopped.
class Output final : public QIODevice
{
public:
    Output(QProcess& process, const ImportProgress& progress)
        : m_process(process), m_progress(progress)
    {
        open(ReadOnly | Unbuffered);
        m_sinceAsked.start();
    }

    bool isSequential() const override { return true; }
    bool wasStopped() const { return m_wasStopped; }
    /// The beginning of what the process has printed.
    QByteArray printed()
    {
        takePrinted();
        return m_printed;
    }
    /// Told while nothing else is.
    void setShare(double share) { m_share = share; }

protected:
    qint64 readData(char* data, qint64 size) override
    {
        qint64 done = 0;
        while (done < size) {
            if (!goesOn())
                return -1;
            done += std::max<qint64>(0, m_process.read(data + done, size - done));
            if (done < size && m_process.bytesAvailable() == 0 &&
                !m_process.waitForReadyRead(pollInterval) &&
                m_process.state() == QProcess::NotRunning && m_process.bytesAvailable() == 0)
                return done;
        }
        return done;
    }
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    bool goesOn()
    {
        if (m_sinceAsked.elapsed() >= pollInterval) {
            m_sinceAsked.start();
            m_wasStopped = m_wasStopped || !m_progress(m_share);
            takePrinted();
        }
        return !m_wasStopped;
    }
    // So that it does not pile up.
    void takePrinted()
    {
        const QByteArray more = m_process.readAllStandardError();
        m_printed += more.left(mostErrorText - m_printed.size());
    }

    QProcess& m_process;
    const ImportProgress& m_progress;
    QElapsedTimer m_sinceAsked;
    double m_share = 0;
    bool m_wasStopped = false;
    QByteArray m_printed;
};

// Asserts in libraries are the one thing that is worth telling of what it printed.
QString assertionIn(const QByteArray& printed)
{
    static const QRegularExpression pattern(QStringLiteral("Assertion [`'](.{1,200}?)' failed"));
    return pattern.match(QString::fromLocal8Bit(printed)).captured(1);
}

QString reasonOf(QProcess& process, Output& output)
{
    process.waitForFinished(endTimeout);
    if (process.exitStatus() == QProcess::NormalExit) {
        return process.exitCode() == int(ImporterExit::OutOfMemory)
                   ? tr("it needs more memory than an import may take")
                   : tr("the import ended early");
    }
    const QString assertion = assertionIn(output.printed());
    switch (process.exitCode()) { // the signal
    case SIGXCPU:
        return tr("its import takes too long for a file of this size");
    case SIGKILL:
        return tr("the system has ended its import, as it does when memory runs out");
    case SIGABRT:
        return assertion.isEmpty()
                   ? tr("the import library gave up on it")
                   : tr("the import library gave up on it, because this does not hold: %1")
                         .arg(assertion);
    default:
        return tr("the import library crashed on it (signal %1)").arg(process.exitCode());
    }
}

} // namespace

SceneImport importInProcess(const QString& path, const ImportProgress& progress)
{
    QProcess process;
    // A plain argument; nothing else of the file reaches the command.
    process.start(importerProgram(), {path}, QIODevice::ReadOnly);
    if (!process.waitForStarted(startTimeout)) {
        return {nullptr, tr("the importer %1 cannot be started: %2")
                             .arg(importerProgram(), process.errorString())};
    }
    Output output(process, progress);
    SceneStreamReader reader(mostStreamBytes());
    const auto end = reader.read(output, [&output, &progress](double share) {
        output.setShare(share * importShare);
        return progress(share * importShare);
    });
    SceneImport import;
    if (end == SceneStreamReader::End::Complete)
        import = {reader.root(), {}, reader.notes()};
    else if (end == SceneStreamReader::End::Refused)
        import.error = reader.reason();
    else if (end == SceneStreamReader::End::Damaged)
        import.error = tr("what the importer handed back is damaged");
    else if (!output.wasStopped() && progress(0))
        import.error = reasonOf(process, output);
    // Whatever it still does, nobody waits for it.
    process.kill();
    process.waitForFinished(endTimeout);
    return import;
}

} // namespace editor
