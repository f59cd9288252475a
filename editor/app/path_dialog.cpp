#include "path_dialog.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QWindow>

#include <utility>

namespace editor {

namespace {

QString suffixOf(const QString& filter)
{
    const int begin = filter.indexOf(QLatin1String("*.")) + 2;
    return filter.mid(begin, filter.length() - begin - 1);
}

} // namespace

PathDialog::PathDialog(QObject* parent) : QObject(parent) {}

PathDialog::~PathDialog() = default;

void PathDialog::askToOpen(const Question& question, std::function<void(const QString&)> chosen)
{
    make(question).setFileMode(QFileDialog::ExistingFile);
    show(std::move(chosen), [] {});
}

void PathDialog::askToWrite(const Question& question, std::function<void(const QString&)> chosen,
                            std::function<void()> rejected)
{
    QFileDialog& dialog = make(question);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setDefaultSuffix(suffixOf(question.filters.value(0)));
    // The dialog's own is for names without any dot.
    const auto dotted = [&dialog] { return QLatin1Char('.') + dialog.defaultSuffix(); };
    if (!question.name.isEmpty())
        dialog.selectFile(question.name + dotted());
    connect(&dialog, &QFileDialog::filterSelected, &dialog,
            [&dialog, dotted](const QString& filter) {
                QString name = QFileInfo(dialog.selectedFiles().value(0)).fileName();
                const bool hadSuffix = name.endsWith(dotted());
                name.chop(hadSuffix ? dotted().size() : 0);
                dialog.setDefaultSuffix(suffixOf(filter));
                if (hadSuffix)
                    dialog.selectFile(name + dotted());
            });
    show(std::move(chosen), std::move(rejected));
}

QFileDialog& PathDialog::make(const Question& question)
{
    m_dialog = std::make_unique<QFileDialog>();
    m_dialog->setWindowTitle(question.title);
    m_dialog->setNameFilters(question.filters);
    if (!question.near.isEmpty())
        m_dialog->setDirectory(QFileInfo(question.near).absolutePath());
    return *m_dialog;
}

void PathDialog::show(std::function<void(const QString&)> chosen, std::function<void()> rejected)
{
    connect(m_dialog.get(), &QFileDialog::fileSelected, this, std::move(chosen));
    connect(m_dialog.get(), &QFileDialog::rejected, this, std::move(rejected));
    m_dialog->setWindowModality(Qt::ApplicationModal);
    m_dialog->winId(); // makes the window that the next line needs
    m_dialog->windowHandle()->setTransientParent(QGuiApplication::focusWindow());
    m_dialog->show();
}

} // namespace editor
