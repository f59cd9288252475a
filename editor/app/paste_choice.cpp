#include "paste_choice.h"

#include <QSettings>
#include <QStringList>

namespace editor {

namespace {

const QString leftOutKey = QStringLiteral("paste/leftOut");

QStringList transformPaths()
{
    return {QStringLiteral("transform.position"), QStringLiteral("transform.rotation"),
            QStringLiteral("transform.scale")};
}

} // namespace

PasteChoice::PasteChoice()
{
    const QStringList paths = QSettings().value(leftOutKey, transformPaths()).toStringList();
    for (const QString& path : paths)
        m_leftOut.insert(path.toStdString());
}

void PasteChoice::set(const std::string& path, bool taken)
{
    if (taken)
        m_leftOut.erase(path);
    else
        m_leftOut.insert(path);
}

void PasteChoice::save() const
{
    QStringList paths;
    for (const std::string& path : m_leftOut)
        paths << QString::fromStdString(path);
    QSettings().setValue(leftOutKey, paths);
}

PropertyChoice PasteChoice::asFunction() const
{
    return [leftOut = m_leftOut](const std::string& path) { return leftOut.count(path) == 0; };
}

PropertyChoice partChoice(const std::string& part)
{
    return [part](const std::string& path) {
        return path == part || path.compare(0, part.size() + 1, part + ".") == 0;
    };
}

} // namespace editor
