#pragma once

#include <QObject>
#include <QStringList>

#include <functional>
#include <memory>

class QFileDialog;

namespace editor {

/// Asks for the path of a file, in front of the window; one question at a time.
class PathDialog final : public QObject
{
    Q_OBJECT

public:
    struct Question
    {
        QString title;
        /// As `QFileDialog` takes them: "Scenes (*.kyrscene)".
        QStringList filters;
        /// A file whose folder the dialog starts in; may be empty.
        QString near;
        /// Offered for a file to be written, with the suffix of the chosen filter added.
        QString name;
    };

    explicit PathDialog(QObject* parent = nullptr);
    ~PathDialog() override;

    /// For an existing file.
    void askToOpen(const Question& question, std::function<void(const QString&)> chosen);
    /// A name without a dot gets the suffix of the chosen filter. Asks before it gives the name of
    /// an existing file.
    void askToWrite(const Question& question, std::function<void(const QString&)> chosen,
                    std::function<void()> rejected);

private:
    QFileDialog& make(const Question& question);
    void show(std::function<void(const QString&)> chosen, std::function<void()> rejected);

    std::unique_ptr<QFileDialog> m_dialog;
};

} // namespace editor
