#pragma once

#include <host/clipboard/clipboard_backend.h>
#include <host/clipboard/x11_clipboard.h>

#include <memory>

class QMimeData;

namespace Zar::platform {

/// The system clipboard through `QGuiApplication`; it cannot be opened without one.
/// Text is offered as "text/plain", with and without UTF-8 by name, with exactly the bytes of the
/// block. What another program offers under X11 is read by `X11Clipboard`.
/// What is changed while the
/// clipboard is open reaches the system in one piece when it is closed, so that no clipboard
/// manager sees it empty in between.
class QtClipboardBackend final : public IClipboardBackend
{
public:
    QtClipboardBackend();
    ~QtClipboardBackend() override;

    bool open() override;
    void close() override;
    bool isFormatAvailable(unsigned format) const override;
    GlobalBlock* data(unsigned format) override;
    std::shared_ptr<const GlobalBlock> share(unsigned format) override;
    bool empty() override;
    bool setData(unsigned format, std::unique_ptr<GlobalBlock> block) override;
    std::unique_ptr<GlobalBlock> allocate(std::size_t size) override;

    std::string problem() const override;

private:
    bool isForeign() const;
    const QMimeData* contents() const;
    std::shared_ptr<GlobalBlock> read(unsigned format) const;

    std::unique_ptr<QMimeData> m_pending;
    std::shared_ptr<GlobalBlock> m_handedOut;
    std::unique_ptr<X11Clipboard> m_x11;
};

} // namespace Zar::platform
