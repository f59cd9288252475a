#pragma once

#include <editor/app/load_controller.h>

#include <editor/files/scene_saver.h>

#include <QElapsedTimer>
#include <QTimer>

#include <memory>
#include <vector>

namespace editor {

class FileCommands;
class RecoveryEntry;

/// Keeps unsaved work from being lost with the program: writes the scene to a folder of this
/// session now and then, removes it once it is saved or given up, and offers at the next start
/// what a session left that did not get to that. Sessions that run are told by their lock files.
class RecoveryJournal final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool offering READ isOffering NOTIFY offerChanged)
    /// Name of the scene that is offered, and when it was written.
    Q_PROPERTY(QString title READ title NOTIFY offerChanged)
    Q_PROPERTY(QString time READ time NOTIFY offerChanged)
    /// The scene's file was changed after that.
    Q_PROPERTY(bool outdated READ isOutdated NOTIFY offerChanged)

public:
    /// All must outlive it.
    RecoveryJournal(SceneDocument& document, LoadController& loader, FileCommands& files,
                    QObject* parent = nullptr);
    /// What is unsaved now is given up.
    ~RecoveryJournal() override;

    /// Begins to write below `folder`, and offers what is there, the newest first.
    void start(const QString& folder);

    /// Whether the document's file is what is being recovered, until it is the original one again.
    bool isRecovering(const QString& path) const;
    bool isOffering() const noexcept { return !m_offers.empty(); }
    QString title() const;
    QString time() const;
    bool isOutdated() const;
    // Answers to the offer.
    /// Opens it as unsaved changes of the file that it was.
    Q_INVOKABLE void recover();
    Q_INVOKABLE void discard();
    /// Offers it again at the next start.
    Q_INVOKABLE void decideLater();

Q_SIGNALS:
    void offerChanged();

private:
    void findOffers(const QString& folder);
    std::unique_ptr<RecoveryEntry> takeOffer();
    void look();
    void write();
    void finishWriting(bool isCurrent);
    void forget();
    void finishRecovery(const QString& path);

    SceneDocument& m_document;
    LoadController& m_loader;
    FileCommands& m_files;
    std::unique_ptr<SceneSaver> m_saver;
    QTimer m_timer;
    QElapsedTimer m_pause;
    qint64 m_lastDuration = 0;
    bool m_isBehind = false;
    bool m_isWanted = false;
    std::unique_ptr<RecoveryEntry> m_own;
    /// The newest last.
    std::vector<std::unique_ptr<RecoveryEntry>> m_offers;
    std::unique_ptr<RecoveryEntry> m_opening;
    /// Open again; kept until it is in the journal of this session.
    std::unique_ptr<RecoveryEntry> m_recovered;
};

} // namespace editor
