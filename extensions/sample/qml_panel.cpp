#include "qml_panel.h"

namespace sample {

QmlPanel::QmlPanel(QQmlEngine& engine, const QString& file, QObject& context)
    : m_component(&engine, QUrl(QStringLiteral("qrc:/sample_extension/%1.qml").arg(file)))
    , m_context(context)
{}

} // namespace sample
