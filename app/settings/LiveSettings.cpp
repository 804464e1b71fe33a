#include "app/settings/LiveSettings.h"

#include <algorithm>

namespace nordkeep {
namespace {

struct Name {
    TextView section;
    TextView key;
};

// What is built from them when the program starts: lines, lists, windows, timers, codes of look-ups.
constexpr Name kAtNextStart[] = {
    {"ComCall", "Address"},
    {"General", "AlarmDateFormat"},
    {"General", "AlarmTimeFormat"},
    {"General", "AliveTest2ResetTimerPrio"},
    {"General", "BackColor"},
    {"General", "ContinousDebugFormatAsHex"},
    {"General", "ContinousDebugToFile"},
    {"General", "DebugBackColor"},
    {"General", "DebugForeColor"},
    {"General", "DebugViewSize"},
    {"General", "DefaultZoom"},
    {"General", "FloatingDebugWindow"},
    {"General", "FloatingSysLogWindow"},
    {"General", "FontName"},
    {"General", "FullRowSelect"},
    {"General", "IgnoreMultipleInstances"},
    {"General", "Language"},
    {"General", "LogViewSize"},
    {"General", "MSMQFormatName"},
    {"General", "MatchCLIDIfExisting"},
    {"General", "MinColumnWidth"},
    {"General", "PrinterDateFormat"},
    {"General", "PrinterFormFeed"},
    {"General", "PrinterPort"},
    {"General", "PrinterTimeFormat"},
    {"General", "RelayBehaviour"},
    {"General", "RelayDelay"},
    {"General", "RelayPort"},
    {"General", "SIAAsciiBlockAsSeparateEvent"},
    {"General", "SIADecodeErrorType"},
    {"General", "SmallCommentSize"},
    {"General", "StatusBarBackColor"},
    {"General", "StatusBarFontSize"},
    {"General", "StatusBarForeColor"},
    {"General", "SystemTimerInterval"},
    {"General", "TestTelegramAlarmCode"},
    {"General", "TestTelegramRestoreCode"},
    {"General", "ToolBar"},
    {"General", "UnAssociatedResetEventsTimeout"},
    {"General", "ViewStatusAsNumber"},
    {"General", "WaitForMLR2SIAASCIIBlockTimeout"},
    {"General", "ZeroTrimObjectId"},
    {"Torvex", "Address"},
    {"Torvex", "Port"},
};

/// Sections whose keys all do: the network, and the columns of the lists.
constexpr TextView kSectionsAtNextStart[] = {"NetWork", "Status", "Mqtt", "ListView_Unacked",
                                             "ListView_Acked"};

template <class Struct>
void Take(Struct& into, const Struct& fresh, std::span<const SettingRow<Struct>> rows) {
    for (const SettingRow<Struct>& row : rows) {
        if (CountsAtNextStart(row.section, row.key)) continue;
        std::visit([&](auto field) { into.*field = fresh.*field; }, row.field);
    }
}

}  // namespace

bool CountsAtNextStart(TextView section, TextView key) {
    const auto isSection = [section](TextView name) { return EqualsNoCase(name, section); };
    if (std::ranges::any_of(kSectionsAtNextStart, isSection)) return true;
    return std::ranges::any_of(kAtNextStart, [&](const Name& name) {
        return EqualsNoCase(name.key, key) && EqualsNoCase(name.section, section);
    });
}

void LiveSettings::Renew() {
    const CentreSettings fresh(files_);
    CentreSettings& now = settings_;
    Take(now.store, fresh.store, StoreSettingRows());
    Take(now.translation, fresh.translation, TranslationSettingRows());
    Take(now.intake, fresh.intake, IntakeSettingRows());
    Take(now.resets, fresh.resets, ResetSettingRows());
    Take(now.dispatch, fresh.dispatch, DispatchSettingRows());
    Take(now.desk, fresh.desk, DeskSettingRows());
    Take(now.torvex, fresh.torvex, TorvexSettingRows());
    Take(now.engine, fresh.engine, EngineSettingRows());
    Take(now.outputs, fresh.outputs, OutputSettingRows());
    Take(now.comCall, fresh.comCall, ComCallSettingRows());
    Take(now.view, fresh.view, ViewStateRows());
    Take(now.console, fresh.console, ConsoleSettingRows());
    Take(now.comments, fresh.comments, CommentSettingRows());
    Take(now.pictures, fresh.pictures, PictureSettingRows());
    Take(now.printer, fresh.printer, PrinterSettingRows());
    Take(now.alarmPages, fresh.alarmPages, AlarmPageSettingRows());
}

}  // namespace nordkeep
