#include "ports/Decoder.h"

namespace nordkeep {
namespace {

template <class FormatSettings>
Decoder Bind(TelegramStep (*next)(TextView, const FormatSettings&, OleDate), FormatSettings settings) {
    return [next, settings = std::move(settings)](TextView received, OleDate now) {
        return next(received, settings, now);
    };
}

}  // namespace

Decoder MakeDecoder(MessageFormat format, const Settings& files, const Text& portName) {
    switch (format) {
        case MessageFormat::Robofon:
            return Bind(&NextRobofonStep, LoadSettings(files, RobofonSettingRows(), portName));
        case MessageFormat::PlainText:
            return Bind(&NextTextStep, LoadTextTelegramSettings(files, portName));
        default:
            return {};
    }
}

}  // namespace nordkeep
