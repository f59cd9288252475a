#include "recovery_journal.h"

#include "file_commands.h"
#include "recovery_entry.h"
#include "report.h"

#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QUuid>

#include <algorithm>
#include <utility>

namespace editor {

namespace {

// Milliseconds.
constexpr int lookPeriod = 2000;
constexpr qint64 shortestPause = 5000;
// So that at most so much of the time is spent on it.
constexpr qint64 pausesPerDuration = 20;

} // namespace

RecoveryJournal::RecoveryJournal(SceneDocument& document, LoadController& loader,
                                 FileCommands& files, QObject* parent)
    : QObject(parent)
    , m_document(document)
    , m_loader(loader)
    , m_files(files)
    , m_saver(std::make_unique<SceneSaver>(document))
{
    m_timer.setInterval(lookPeriod);
    connect(&m_timer, &QTimer::timeout, this, &RecoveryJournal::look);
    connect(&document.undoStack(), &QUndoStack::indexChanged, this, [this] { m_isBehind = true; });
    connect(&document, &SceneDocument::modifiedChanged, this, [this](bool isModified) {
        m_isBehind = isModified;
        if (!isModified)
            forget();
    });
    connect(&document, &SceneDocument::aboutToReset, this, &RecoveryJournal::forget);
    connect(m_saver.get(), &SceneSaver::saved, this,
            [this](const QString&, bool isCurrent) { finishWriting(isCurrent); });
    connect(m_saver.get(), &SceneSaver::failed, this,
            [this](const QString&, const QString& reason) {
                m_lastDuration = m_pause.restart();
                m_isBehind = true;
                reportFailure(tr("Unsaved work is not safe from a crash: %1").arg(reason));
            });
    connect(&loader, &LoadController::loaded, this, &RecoveryJournal::finishRecovery);
    connect(&loader, &LoadController::failed, this, [this] { m_opening.reset(); });
}

RecoveryJournal::~RecoveryJournal()
{
    m_saver.reset();
    if (m_own)
        m_own->remove();
    if (m_recovered)
        m_recovered->remove();
}

void RecoveryJournal::start(const QString& folder)
{
    findOffers(folder);
    const QString name = QUuid::createUuid().toString(QUuid::WithoutBraces);
    m_own = std::make_unique<RecoveryEntry>(QDir(folder).filePath(name));
    if (!m_own->isOurs())
        reportFailure(tr("Unsaved work is not safe from a crash: cannot write to \"%1\".")
                          .arg(QDir::toNativeSeparators(folder)));
    m_pause.start();
    m_timer.start();
}

void RecoveryJournal::findOffers(const QString& folder)
{
    const QStringList names = QDir(folder).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString& name : names) {
        auto entry = std::make_unique<RecoveryEntry>(QDir(folder).filePath(name));
        if (!entry->isOurs())
            continue;
        if (entry->isFull())
            m_offers.push_back(std::move(entry));
        else
            entry->remove();
    }
    std::sort(m_offers.begin(), m_offers.end(),
              [](const auto& a, const auto& b) { return a->written() < b->written(); });
    if (!m_offers.empty())
        Q_EMIT offerChanged();
}

bool RecoveryJournal::isRecovering(const QString& path) const
{
    return m_opening && path == m_opening->scenePath();
}

QString RecoveryJournal::title() const
{
    if (m_offers.empty())
        return {};
    const RecoveryEntry& offer = *m_offers.back();
    return QFileInfo(offer.originalPath().isEmpty() ? offer.scenePath() : offer.originalPath())
        .fileName();
}

QString RecoveryJournal::time() const
{
    return m_offers.empty() ? QString()
                            : QLocale().toString(m_offers.back()->written(), QLocale::ShortFormat);
}

bool RecoveryJournal::isOutdated() const
{
    if (m_offers.empty())
        return false;
    const QFileInfo file(m_offers.back()->originalPath());
    return file.exists() && file.lastModified() > m_offers.back()->written();
}

void RecoveryJournal::recover()
{
    m_opening = takeOffer();
    if (m_opening)
        m_loader.load(m_opening->scenePath());
    // The others wait for the next start.
    m_offers.clear();
    Q_EMIT offerChanged();
}

void RecoveryJournal::discard()
{
    if (const auto entry = takeOffer())
        entry->remove();
}

void RecoveryJournal::decideLater()
{
    m_offers.clear();
    Q_EMIT offerChanged();
}

std::unique_ptr<RecoveryEntry> RecoveryJournal::takeOffer()
{
    if (m_offers.empty())
        return nullptr;
    std::unique_ptr<RecoveryEntry> entry = std::move(m_offers.back());
    m_offers.pop_back();
    Q_EMIT offerChanged();
    return entry;
}

void RecoveryJournal::finishRecovery(const QString& path)
{
    if (!isRecovering(path))
        return;
    m_recovered = std::move(m_opening);
    m_files.markUnsaved(m_recovered->originalPath(), m_recovered->original());
    reportNote(tr("Recovered unsaved work of %1").arg(m_document.title()));
}

void RecoveryJournal::look()
{
    const qint64 pause = std::max(shortestPause, pausesPerDuration * m_lastDuration);
    if (m_isBehind && m_document.isModified() && !m_saver->isSaving() && m_own->isOurs() &&
        m_pause.hasExpired(pause))
        write();
}

void RecoveryJournal::write()
{
    m_own->setOriginal(m_document.filePath(), m_files.knownFile());
    m_isBehind = false;
    m_isWanted = true;
    m_pause.restart();
    m_saver->save(m_own->scenePath());
}

void RecoveryJournal::finishWriting(bool isCurrent)
{
    m_lastDuration = m_pause.restart();
    m_isBehind |= !isCurrent;
    if (!m_isWanted)
        m_own->removeScene();
    if (const auto recovered = std::exchange(m_recovered, nullptr))
        recovered->remove();
}

// The work is saved or given up.
void RecoveryJournal::forget()
{
    m_isWanted = false;
    m_saver->cancel();
    if (m_own)
        m_own->removeScene();
    if (const auto recovered = std::exchange(m_recovered, nullptr))
        recovered->remove();
}

} // namespace editor
