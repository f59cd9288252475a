// Another program on the same display: "copy TEXT" offers the text and "image" a picture until the
// input ends, "paste" prints the clipboard's text.
#include <tools/common/string_utils.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QSocketNotifier>

#include <cstdio>

int main(int argc, char** argv)
{
    QGuiApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    const QString command = arguments.value(1);
    if (command == QLatin1String("paste")) {
        std::string text;
        const bool ok = Zar::StringUtils::copyFromClipboardT(text);
        std::fwrite(text.data(), 1, text.size(), stdout);
        return ok ? 0 : 1;
    }
    if (command == QLatin1String("copy")) {
        if (!Zar::StringUtils::copyToClipboardT(arguments.value(2).toStdString()))
            return 1;
    } else {
        QGuiApplication::clipboard()->setImage(QImage(8, 8, QImage::Format_RGB32));
    }
    QSocketNotifier input(0, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &application, &QCoreApplication::quit);
    std::puts("ready");
    std::fflush(stdout);
    return application.exec();
}
