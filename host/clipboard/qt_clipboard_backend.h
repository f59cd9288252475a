#pragma once

#include <host/clipboard/clipboard_backend.h>

#include <memory>

class QMimeData;

namespace Zar::platform {

/// The system clipboard through `QGuiApplication`; it cannot be opened without one.
/// Text is offered as "text/plain" with exactly the bytes of the block. What is changed while the
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
    bool empty() override;
    bool setData(unsigned format, std::unique_ptr<GlobalBlock> block) override;
    std::unique_ptr<GlobalBlock> allocate(std::size_t size) override;

private:
    const QMimeData* contents() const;

    std::unique_ptr<QMimeData> m_pending;
    std::unique_ptr<GlobalBlock> m_handedOut;
};

} // namespace Zar::platform
