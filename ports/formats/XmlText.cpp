#include "ports/formats/XmlText.h"

#include "runtime/Fields.h"

namespace nordkeep {
namespace {

std::size_t FindTag(TextView text, const Text& tag, XmlNames names, std::size_t from) {
    if (names == XmlNames::Exact) return text.find(tag, from);
    std::size_t at = text.find('<', from);
    while (at != TextView::npos && !EqualsNoCase(text.substr(at, tag.size()), tag))
        at = text.find('<', at + 1);
    return at;
}

}  // namespace

std::optional<XmlElement> FindXmlElement(TextView text, TextView name, XmlNames names) {
    const Text startTag = "<" + Text(name) + ">";
    const Text endTag = "</" + Text(name) + ">";
    const std::size_t start = FindTag(text, startTag, names, 0);
    if (start == TextView::npos) return std::nullopt;
    const std::size_t inner = start + startTag.size();
    const std::size_t end = FindTag(text, endTag, names, inner);
    if (end == TextView::npos) return std::nullopt;
    return XmlElement{start, text.substr(inner, end - inner), end + endTag.size()};
}

Text GetXmlElement(TextView text, TextView name, XmlNames names) {
    const auto element = FindXmlElement(text, name, names);
    return element ? Text(element->inner) : Text();
}

int TypeNumber(TextView text) {
    const std::int64_t number = LeadingNumber(text);
    constexpr int kNone = -1;
    return number < -32768 || number > 32767 ? kNone : static_cast<int>(number);
}

}  // namespace nordkeep
