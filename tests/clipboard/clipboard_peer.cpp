// Another program on the same display: "copy TEXT" offers the text, with a line for each time that
// it is asked for its formats, and "image" a picture until the input ends, "paste" prints the
// clipboard's text.
#include <tools/common/string_utils.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QMimeData>
#include <QSocketNotifier>

#include <cstdio>

namespace {

void say(const char* line)
{
    std::puts(line);
    std::fflush(stdout);
}

class TellingMimeData final : public QMimeData
{
public:
    QStringList formats() const override
    {
        say("asked");
        return QMimeData::formats();
    }
    bool hasFormat(const QString& format) const override
    {
        return QMimeData::formats().contains(format);
    }
};

} // namespace

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
        auto* offer = new TellingMimeData;
        offer->setText(arguments.value(2));
        QGuiApplication::clipboard()->setMimeData(offer);
    } else {
        QGuiApplication::clipboard()->setImage(QImage(8, 8, QImage::Format_RGB32));
    }
    QSocketNotifier input(0, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &application, &QCoreApplication::quit);
    say("ready");
    return application.exec();
}
