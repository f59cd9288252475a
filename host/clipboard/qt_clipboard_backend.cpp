#include "qt_clipboard_backend.h"

#include <host/clipboard/clipboard.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include <cstring>

namespace Zar::platform {
namespace {

// The second is what programs offer that name the encoding and nothing else.
QString plainTextFormat(const QMimeData& contents)
{
    for (const char* format : {"text/plain", "text/plain;charset=utf-8"}) {
        if (contents.hasFormat(QLatin1String(format)))
            return QLatin1String(format);
    }
    return {};
}

} // namespace

QtClipboardBackend::QtClipboardBackend() = default;
QtClipboardBackend::~QtClipboardBackend() = default;

bool QtClipboardBackend::open()
{
    return qobject_cast<QGuiApplication*>(QCoreApplication::instance()) != nullptr;
}

void QtClipboardBackend::close()
{
    m_handedOut.reset();
    if (m_pending)
        QGuiApplication::clipboard()->setMimeData(m_pending.release());
}

const QMimeData* QtClipboardBackend::contents() const
{
    return m_pending ? m_pending.get() : QGuiApplication::clipboard()->mimeData();
}

bool QtClipboardBackend::isFormatAvailable(unsigned format) const
{
    const QMimeData* available = contents();
    return format == textFormat && available && !plainTextFormat(*available).isEmpty();
}

GlobalBlock* QtClipboardBackend::data(unsigned format)
{
    if (!isFormatAvailable(format))
        return nullptr;
    const QMimeData* available = contents();
    const QByteArray text = available->data(plainTextFormat(*available));
    const auto size = static_cast<std::size_t>(text.size());
    m_handedOut = GlobalBlock::allocate(size + 1);
    if (m_handedOut)
        std::memcpy(m_handedOut->data(), text.constData(), size + 1);
    return m_handedOut.get();
}

bool QtClipboardBackend::empty()
{
    m_pending = std::make_unique<QMimeData>();
    return true;
}

bool QtClipboardBackend::setData(unsigned format, std::unique_ptr<GlobalBlock> block)
{
    constexpr std::size_t largest = 0x7fffffff - 64;
    if (format != textFormat || block->size() > largest)
        return false;
    if (!m_pending)
        m_pending = std::make_unique<QMimeData>();
    m_pending->setData(QStringLiteral("text/plain"),
                       QByteArray(block->data(), static_cast<int>(block->size())));
    return true;
}

std::unique_ptr<GlobalBlock> QtClipboardBackend::allocate(std::size_t size)
{
    return GlobalBlock::allocate(size);
}

} // namespace Zar::platform
