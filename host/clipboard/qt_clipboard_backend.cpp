#include "qt_clipboard_backend.h"

#include "clipboard.h"
#include "text_formats.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include <cstring>

namespace Zar::platform {
namespace {

QString plainTextFormat(const QMimeData& contents)
{
    const QStringList formats = contents.formats();
    std::vector<std::string> names;
    for (const QString& format : formats)
        names.push_back(format.toStdString());
    const auto best = bestTextFormat(names);
    return best ? formats[int(*best)] : QString();
}

/// Offers the text of a block, which is copied only when somebody asks for it.
class BlockMimeData final : public QMimeData
{
public:
    explicit BlockMimeData(std::unique_ptr<GlobalBlock> block) : m_block(std::move(block)) {}

    /// Null unless the text ends with a NUL.
    std::shared_ptr<GlobalBlock> terminatedBlock() const noexcept
    {
        const std::size_t size = m_block->size();
        return size > 0 && m_block->data()[size - 1] == '\0' ? m_block : nullptr;
    }

    QStringList formats() const override
    {
        return {QStringLiteral("text/plain"), QStringLiteral("text/plain;charset=utf-8"),
                QStringLiteral("text/plain;charset=UTF-8")};
    }
    bool hasFormat(const QString& format) const override { return formats().contains(format); }

protected:
    QVariant retrieveData(const QString& format, QVariant::Type) const override
    {
        return hasFormat(format) ? QByteArray(m_block->data(), int(m_block->size())) : QVariant();
    }

private:
    std::shared_ptr<GlobalBlock> m_block;
};

// The text is followed by a NUL.
std::shared_ptr<GlobalBlock> blockOf(const char* text, std::size_t size)
{
    std::unique_ptr<GlobalBlock> block = GlobalBlock::allocate(size + 1);
    if (block)
        std::memcpy(block->data(), text, size + 1);
    return block;
}

} // namespace

QtClipboardBackend::QtClipboardBackend() = default;
QtClipboardBackend::~QtClipboardBackend() = default;

bool QtClipboardBackend::open()
{
    if (!qobject_cast<QGuiApplication*>(QCoreApplication::instance()))
        return false;
    if (!m_x11 && QGuiApplication::platformName() == QLatin1String("xcb"))
        m_x11 = X11Clipboard::connect();
    return true;
}

bool QtClipboardBackend::isForeign() const
{
    return m_x11 && !m_pending && !QGuiApplication::clipboard()->ownsClipboard();
}

std::string QtClipboardBackend::problem() const
{
    return isForeign() ? m_x11->problem() : std::string();
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
    if (format != textFormat)
        return false;
    if (isForeign())
        return m_x11->offersText();
    const QMimeData* available = contents();
    return available && !plainTextFormat(*available).isEmpty();
}

GlobalBlock* QtClipboardBackend::data(unsigned format)
{
    m_handedOut = read(format);
    return m_handedOut.get();
}

std::shared_ptr<const GlobalBlock> QtClipboardBackend::share(unsigned format)
{
    return read(format);
}

std::shared_ptr<GlobalBlock> QtClipboardBackend::read(unsigned format) const
{
    if (format != textFormat)
        return nullptr;
    if (isForeign()) {
        const std::optional<std::string> text = m_x11->text();
        return text ? blockOf(text->c_str(), text->size()) : nullptr;
    }
    const QMimeData* available = contents();
    const auto* own = dynamic_cast<const BlockMimeData*>(available);
    if (std::shared_ptr<GlobalBlock> block = own ? own->terminatedBlock() : nullptr)
        return block;
    const QString textFormatName = available ? plainTextFormat(*available) : QString();
    if (textFormatName.isEmpty())
        return nullptr;
    const QByteArray text = available->data(textFormatName);
    return blockOf(text.constData(), std::size_t(text.size()));
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
    m_pending = std::make_unique<BlockMimeData>(std::move(block));
    return true;
}

std::unique_ptr<GlobalBlock> QtClipboardBackend::allocate(std::size_t size)
{
    return GlobalBlock::allocate(size);
}

} // namespace Zar::platform
