#pragma once

#include "crate.h"

#include <host/clipboard/clipboard_backend.h>
#include <host/clipboard/global_block.h>
#include <host/scene/recorded_asset_selection.h>
#include <kyr_scene_outline/scene_browser_data.h>
#include <tools/common/string_utils.h>

#include <QStandardItemModel>

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace bench {

class MemoryClipboard : public Zar::platform::IClipboardBackend
{
public:
    bool open() override { return true; }
    void close() override {}
    bool isFormatAvailable(unsigned) const override { return m_text != nullptr; }
    Zar::platform::GlobalBlock* data(unsigned) override { return m_text.get(); }
    std::shared_ptr<const Zar::platform::GlobalBlock> share(unsigned) override { return m_text; }
    bool empty() override
    {
        m_text.reset();
        return true;
    }
    bool setData(unsigned, std::unique_ptr<Zar::platform::GlobalBlock> block) override
    {
        m_text = std::move(block);
        return true;
    }
    std::unique_ptr<Zar::platform::GlobalBlock> allocate(std::size_t size) override
    {
        return Zar::platform::GlobalBlock::allocate(size);
    }
    std::string text() const { return m_text->data(); }

private:
    std::shared_ptr<Zar::platform::GlobalBlock> m_text;
};

/// A browser over one list of crates, all of them selected, whose changes `controller` records.
class Scene : public IAssetModel
{
public:
    Scene(int count, int seed, const std::shared_ptr<Zar::ChangesController>& controller = {})
        : crates(makeCrates(count, seed)), m_items(count, 1), m_selection(controller)
    {
        IAssetSelection::Objects objects;
        for (const auto& crate : crates) {
            crate->changes = controller.get();
            m_rows.emplace(crate.get(), int(m_rows.size()));
            objects.emplace_back(kyr::ReflectedObject(crate));
        }
        browser = std::make_unique<SceneBrowserData>(this, &m_selection, nullptr);
        m_selection.setSelection(std::move(objects), false);
    }

    QAbstractItemModel* itemModel() const override { return &m_items; }
    QModelIndex indexOf(const kyr::ReflectedObject& object) const override
    {
        return m_items.index(m_rows.at(object.get()), 0);
    }
    void setObjectHovered(const kyr::ReflectedObject&, bool) override {}
    void activateItem(const QModelIndex&) override {}

    std::vector<std::shared_ptr<Crate>> crates;
    std::unique_ptr<SceneBrowserData> browser;

private:
    mutable QStandardItemModel m_items;
    std::unordered_map<const void*, int> m_rows;
    RecordedAssetSelection m_selection;
};

/// Two documents in turn, so that every value differs every time.
class Documents
{
public:
    explicit Documents(int count)
    {
        Zar::platform::setClipboardBackend(m_clipboard);
        for (const int seed : {1, 1000000}) {
            Scene(count, seed).browser->copyProperties();
            m_texts.push_back(m_clipboard->text());
        }
    }
    const std::string& next() { return m_texts[m_next++ % 2]; }
    void offerNext() { Zar::StringUtils::copyToClipboardT(next()); }

private:
    std::shared_ptr<MemoryClipboard> m_clipboard = std::make_shared<MemoryClipboard>();
    std::vector<std::string> m_texts;
    std::size_t m_next = 0;
};

} // namespace bench
