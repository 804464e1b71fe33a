#include "ports/Decoder.h"

#include "ports/LineFormat.h"

namespace nordkeep {

Decoder MakeDecoder(MessageFormat format, const Settings& files, const Text& portName) {
    const Language withoutTexts;
    const std::shared_ptr<LineFormat> line =
        MakeLineFormat(format, {.files = files, .language = withoutTexts, .portName = portName});
    if (!line) return {};
    return [line](TextView received, OleDate now) { return line->Next(received, now); };
}

}  // namespace nordkeep
