#include "ports/LineFormats.h"

#include "ports/Dc09Check.h"
#include "ports/dc09/Dc09.h"
#include "ports/formats/GoogolT1.h"
#include "ports/formats/Robofon.h"
#include "ports/formats/Rsm02.h"
#include "ports/formats/SurGard.h"
#include "ports/formats/TextTelegram.h"
#include "ports/formats/XmlGateways.h"
#include "ports/lines/LineSettings.h"
#include "runtime/SharedTexts.h"

namespace nordkeep {
namespace {

constexpr int kTextExportDropped = 1095;
constexpr int kTextUnknownMessage = 1059;
constexpr int kTextWrongClock = 5306;
constexpr int kTextWrongKey = 5307;
constexpr int kTextPlainText = 5308;
constexpr int kTextSilence = 5309;
constexpr int kTextHeardAgain = 5310;

template <class Struct>
Struct Load(const FormatParts& parts, std::span<const SettingRow<Struct>> rows) {
    return LoadSettings(parts.files, rows, parts.portName);
}

Text DescriptionOf(const FormatParts& parts) {
    return LoadLineSettings(parts.files, parts.portName).PortDescription;
}

/// A format whose line remembers nothing between telegrams.
template <class FormatSettings>
class Stateless final : public LineFormat {
 public:
    using NextStep = TelegramStep (*)(TextView, const FormatSettings&, OleDate);
    Stateless(NextStep next, FormatSettings settings) : next_(next), settings_(std::move(settings)) {}
    TelegramStep Next(TextView received, const LineClock& clock) override {
        return next_(received, settings_, clock.now);
    }
    TelegramStep Due(const ServiceTick&) override { return {}; }

 private:
    NextStep next_;
    FormatSettings settings_;
};

template <class FormatSettings>
std::unique_ptr<LineFormat> MakeStateless(TelegramStep (*next)(TextView, const FormatSettings&, OleDate),
                                          FormatSettings settings) {
    return std::make_unique<Stateless<FormatSettings>>(next, std::move(settings));
}

class GoogolFormat final : public LineFormat {
 public:
    explicit GoogolFormat(GoogolSettings settings) : settings_(std::move(settings)) {}
    TelegramStep Next(TextView received, const LineClock& clock) override {
        return NextGoogolStep(received, settings_, clock.now);
    }
    TelegramStep Due(const ServiceTick& tick) override { return SetClockInGoogolT1(clock_, settings_, tick); }

 private:
    GoogolSettings settings_;
    GoogolClock clock_{};
};

class Rsm02Format final : public LineFormat {
 public:
    Rsm02Format(Rsm02Settings settings, const CallerBook& callers)
        : settings_(std::move(settings)), callers_(callers) {}
    TelegramStep Next(TextView received, const LineClock& clock) override {
        return NextRsm02Step(received, {settings_, state_, callers_}, clock.now);
    }
    TelegramStep Due(const ServiceTick&) override { return {}; }
    std::unique_ptr<LineFormat> ForAnotherCaller() const override {
        return std::make_unique<Rsm02Format>(settings_, callers_);
    }

 private:
    Rsm02Settings settings_;
    Rsm02State state_{};
    const CallerBook& callers_;
};

class SurGardFormat final : public LineFormat {
 public:
    explicit SurGardFormat(SurGardSettings settings) : settings_(std::move(settings)) {}
    TelegramStep Next(TextView received, const LineClock& clock) override {
        return NextSurGardStep(received, settings_, wait_, clock.now);
    }
    TelegramStep Due(const ServiceTick& tick) override {
        if (tick.isProgramEnding) return wait_.Finish(settings_.sia, tick.now);
        return wait_.Tick(tick.tickMs, settings_.sia, tick.now);
    }

 private:
    SurGardSettings settings_;
    SiaWait wait_{};
};

class Dc09Format final : public LineFormat {
 public:
    explicit Dc09Format(Dc09Settings settings) : line_(std::move(settings)) {}
    TelegramStep Next(TextView received, const LineClock& clock) override {
        return line_.Next(received, clock);
    }
    TelegramStep Due(const ServiceTick& tick) override { return line_.Due(tick); }
    bool OnStored(std::uint64_t receipt, bool isStored) override { return line_.OnStored(receipt, isStored); }
    std::vector<LineAccount> Accounts() const override { return line_.Accounts(); }

 private:
    Dc09Line line_;
};

class ExportFormat final : public LineFormat {
 public:
    explicit ExportFormat(std::shared_ptr<RobofonExport> queue) : queue_(std::move(queue)) {}
    TelegramStep Next(TextView received, const LineClock&) override { return queue_->Receive(received); }
    TelegramStep Due(const ServiceTick& tick) override { return queue_->Tick(tick); }

 private:
    std::shared_ptr<RobofonExport> queue_;
};

std::unique_ptr<LineFormat> MakeText(const FormatParts& parts) {
    TextTelegramSettings settings = Load(parts, TextTelegramSettingRows());
    settings.cleaning = Load(parts, TextCleaningRows());
    return MakeStateless(&NextTextStep, std::move(settings));
}

std::unique_ptr<LineFormat> MakeGoogol(const FormatParts& parts) {
    GoogolSettings settings = Load(parts, GoogolSettingRows());
    settings.cleaning = Load(parts, TextCleaningRows());
    settings.PortDescription = DescriptionOf(parts);
    return std::make_unique<GoogolFormat>(std::move(settings));
}

std::unique_ptr<LineFormat> MakeRsm02(const FormatParts& parts) {
    Rsm02Settings settings = Load(parts, Rsm02SettingRows());
    settings.cleaning = Load(parts, TextCleaningRows());
    settings.calls = Load(parts, CallSettingRows());
    settings.sia = Load(parts, SiaSettingRows());
    settings.multiCom = Load(parts, MultiComSettingRows());
    settings.PortName = parts.portName;
    settings.PortDescription = DescriptionOf(parts);
    settings.hiddenNumber = parts.language.GetLanguageText(kTextHiddenNumber);
    return std::make_unique<Rsm02Format>(std::move(settings), parts.callers);
}

std::unique_ptr<LineFormat> MakeSurGard(const FormatParts& parts) {
    SurGardSettings settings = Load(parts, SurGardSettingRows());
    settings.sia = Load(parts, SiaSettingRows());
    settings.unknownMessage = parts.language.GetLanguageText(kTextUnknownMessage);
    return std::make_unique<SurGardFormat>(std::move(settings));
}

/// An account whose row cannot be read is still a known one.
Dc09AccountSettings LoadAccounts(const FormatParts& parts) {
    Dc09AccountSettings accounts;
    for (const Text& name : parts.files.ListKeys(kDc09Accounts, "Settings\\" + parts.portName + ".ini")) {
        const auto setting =
            ReadDc09Account(parts.files.ReadPortIni(kDc09Accounts, name, "", parts.portName));
        accounts[UpperCase(name)] = setting.value_or(Dc09AccountSetting{});
    }
    return accounts;
}

std::unique_ptr<LineFormat> MakeDc09(const FormatParts& parts) {
    Dc09Settings settings = Load(parts, Dc09SettingRows());
    settings.sia = Load(parts, SiaSettingRows());
    settings.accounts = LoadAccounts(parts);
    settings.PortDescription = DescriptionOf(parts);
    const Language& language = parts.language;
    settings.texts = {.wrongClock = language.GetLanguageText(kTextWrongClock),
                      .wrongKey = language.GetLanguageText(kTextWrongKey),
                      .plainText = language.GetLanguageText(kTextPlainText),
                      .silence = language.GetLanguageText(kTextSilence),
                      .heardAgain = language.GetLanguageText(kTextHeardAgain)};
    return std::make_unique<Dc09Format>(std::move(settings));
}

std::unique_ptr<LineFormat> MakeExport(const FormatParts& parts) {
    RobofonExportSettings settings = Load(parts, RobofonExportSettingRows());
    settings.PortDescription = DescriptionOf(parts);
    settings.droppedText = parts.language.GetLanguageText(kTextExportDropped);
    auto queue = std::make_shared<RobofonExport>(std::move(settings));
    parts.exports.Add(parts.portName, queue);
    return std::make_unique<ExportFormat>(std::move(queue));
}

}  // namespace

std::unique_ptr<LineFormat> MakeLineFormat(MessageFormat format, const FormatParts& parts) {
    switch (format) {
        case MessageFormat::Robofon:
            return MakeStateless(&NextRobofonStep, Load(parts, RobofonSettingRows()));
        case MessageFormat::GoogolT1:
            return MakeGoogol(parts);
        case MessageFormat::PlainText:
            return MakeText(parts);
        case MessageFormat::RSM02:
            return MakeRsm02(parts);
        case MessageFormat::RobofonExport:
            return MakeExport(parts);
        case MessageFormat::SOSAccessMini:
            return MakeStateless(&NextSosAccessMiniStep, Load(parts, XmlGatewaySettingRows()));
        case MessageFormat::AptusMini:
            return MakeStateless(&NextAptusMiniStep, Load(parts, XmlGatewaySettingRows()));
        case MessageFormat::SOSAccessV4:
            return MakeStateless(&NextSosAccessV4Step, Load(parts, XmlGatewaySettingRows()));
        case MessageFormat::SurGardMLR2:
            return MakeSurGard(parts);
        case MessageFormat::SiaDc09:
            return MakeDc09(parts);
        default:
            return {};
    }
}

}  // namespace nordkeep
