#include "shader_program.h"

#include <QFile>
#include <QLoggingCategory>
#include <QOpenGLShaderProgram>

namespace editor {

namespace {

Q_LOGGING_CATEGORY(logViewport, "editor.viewport")

// The text of a shader, with each line `#include file` replaced by that file.
QByteArray shaderSource(const QByteArray& name)
{
    static const QByteArray include = "#include ";
    QFile file(QStringLiteral(":/editor/viewport/shaders/") + QString::fromLatin1(name));
    if (!file.open(QIODevice::ReadOnly))
        qCCritical(logViewport, "The shader %s is missing from the resources", name.constData());
    QByteArray source;
    while (!file.atEnd()) {
        const QByteArray line = file.readLine();
        source +=
            line.startsWith(include) ? shaderSource(line.mid(include.size()).trimmed()) : line;
    }
    return source;
}

} // namespace

std::unique_ptr<QOpenGLShaderProgram> loadProgram(const char* vertexShader,
                                                  const char* fragmentShader)
{
    auto program = std::make_unique<QOpenGLShaderProgram>();
    program->addCacheableShaderFromSourceCode(QOpenGLShader::Vertex, shaderSource(vertexShader));
    program->addCacheableShaderFromSourceCode(QOpenGLShader::Fragment,
                                              shaderSource(fragmentShader));
    program->bindAttributeLocation("vertexPosition", attribute::position);
    program->bindAttributeLocation("vertexNormal", attribute::normal);
    program->bindAttributeLocation("instanceRow0", attribute::instanceRow);
    program->bindAttributeLocation("instanceRow1", attribute::instanceRow + 1);
    program->bindAttributeLocation("instanceRow2", attribute::instanceRow + 2);
    program->bindAttributeLocation("instanceColor", attribute::instanceColor);
    if (!program->link())
        qCCritical(logViewport, "%s and %s do not link: %s", vertexShader, fragmentShader,
                   qUtf8Printable(program->log()));
    return program;
}

} // namespace editor
