// Feeds bytes to the property clipboard as if they had been found on the clipboard: they are
// refused or are a document, and then one that survives being written and read again and can be
// pasted.
#include <host/data_section/xml_section.h>
#include <host/reflection/reflected_object.h>
#include <host/variant/value_types.h>
#include <kyr_scene_outline/properties/property_document.h>
#include <property_clipboard/property_bag.h>

#include <QLoggingCategory>

#include <cstdint>
#include <cstdlib>

namespace {

using Zar::DataSectionPtr;
using Zar::XMLSection;

void require(bool holds)
{
    if (!holds)
        std::abort();
}

// Something of every type, with a nested object.
std::shared_ptr<test::PropertyBag> makeTarget()
{
    auto nested = std::make_shared<test::PropertyBag>();
    nested->add("intensity", lumo::Variant(1.0f));
    nested->add("tint", lumo::Variant(lumo::Color()));
    auto target = std::make_shared<test::PropertyBag>("target");
    target->add("title", lumo::Variant("title"));
    target->add("visible", lumo::Variant(true));
    target->add("count", lumo::Variant(3));
    target->add("value", lumo::Variant(0.5));
    target->add("position", lumo::Variant(lumo::Vector3()));
    target->nest("light", nested);
    return target;
}

void pasteTwice(const DataSectionPtr& document)
{
    const auto target = makeTarget();
    const IAssetSelection::Objects targets(3, kyr::PersistentObject(kyr::ReflectedObject(target)));
    kyr::properties::pasteDocument(targets, document);
    const DataSectionPtr copied = kyr::properties::buildPropertyDocument(targets);
    const std::string before = target->text();
    require(kyr::properties::pasteDocument(targets, copied));
    require(target->text() == before);
}

void readAsDocument(const std::string& bytes)
{
    const DataSectionPtr document =
        XMLSection::createFromBinary("objects", new Zar::BinaryBlock(bytes, "fuzz"), true);
    if (!document)
        return;
    const auto written = document->asBinary();
    require(written->bytes().find('\0') == Zar::StringRef::npos);
    const DataSectionPtr again = XMLSection::createFromBinary("objects", written, true);
    require(again && again->asBinary()->bytes() == written->bytes());
    pasteTwice(document);
}

void writeAsText(const std::string& bytes)
{
    const DataSectionPtr document(new XMLSection("objects"));
    document->writeString(bytes, bytes);
    const DataSectionPtr again =
        XMLSection::createFromBinary("objects", document->asBinary(), true);
    require(again && again->readString(bytes, "missing") == bytes);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    QLoggingCategory::setFilterRules(QStringLiteral("kyr.host=false"));
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    readAsDocument(bytes);
    writeAsText(bytes);
    return 0;
}
