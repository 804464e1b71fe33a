#include "translation/DataCodes.h"

#include "runtime/Fields.h"

namespace nordkeep {
namespace {

constexpr std::size_t kModifierLetters = 2;

Text DataCodeFile(const cTranslate& set) {
    return "Settings\\" + set.m_FileName + ".DataCode";
}

/// A code out of a telegram must not lead to another folder.
bool CanNameAFolder(TextView code) {
    return IsSafeComponent(code) && code.find(':') == TextView::npos;
}

}  // namespace

std::optional<DataCode> FindDataCode(const Settings& settings, const cTranslate& set, DataCodeSection section,
                                     TextView code) {
    const TextView name = section == DataCodeSection::Event ? "Event" : "Environmental";
    const Text value = settings.ReadIni(name, code, code, DataCodeFile(set));
    if (value.empty()) return std::nullopt;
    return DataCode{.name = GetField(value, 0, ";"),
                    .resetOrClass = UpperCase(GetField(value, 1, ";")),
                    .prio = Text(TrimBlanks(GetField(value, 2, ";")))};
}

Text ReadableModifiers(const Settings& settings, const cTranslate& set, TextView modifiers) {
    Text readable;
    for (const Text& item : Split(modifiers, ',')) {
        if (item.empty()) break;
        if (!readable.empty()) readable += ',';
        const Text letters = item.substr(0, kModifierLetters);
        readable += settings.ReadIni("Modifiers", letters, letters, DataCodeFile(set));
        readable += item.substr(letters.size());
    }
    return readable;
}

Text ZoneText(const Settings& settings, TextView idCode, TextView typeCode, TextView address) {
    if (!CanNameAFolder(idCode)) return Text(address);
    const Text file = "Information\\SIA\\" + Text(idCode) + "\\Zones.SIA";
    const Text text = settings.ReadIni(typeCode, address, {}, file);
    return text.empty() ? settings.ReadIni("General", address, address, file) : text;
}

}  // namespace nordkeep
