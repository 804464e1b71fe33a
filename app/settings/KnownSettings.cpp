#include "app/settings/KnownSettings.h"

#include "app/settings/EngineSettings.h"
#include "console/boxes/CommentSettings.h"
#include "console/boxes/PictureSettings.h"
#include "console/lists/ListColumns.h"
#include "console/print/AlarmPrinting.h"
#include "console/print/PrintDocument.h"
#include "console/window/ConsoleSettings.h"
#include "console/window/ViewState.h"
#include "network/NetworkSettings.h"
#include "pipeline/DispatchSettings.h"
#include "pipeline/IntakeSettings.h"
#include "pipeline/OutputSettings.h"
#include "pipeline/ResetSettings.h"
#include "ports/PortSettings.h"
#include "ports/TestTelegrams.h"
#include "ports/collectors/GsmModem.h"
#include "ports/collectors/MailSettings.h"
#include "ports/dc09/Dc09.h"
#include "ports/formats/CallerIdentity.h"
#include "ports/formats/GoogolT1.h"
#include "ports/formats/MultiCom.h"
#include "ports/formats/Robofon.h"
#include "ports/formats/RobofonExport.h"
#include "ports/formats/Rsm02.h"
#include "ports/formats/SiaDecoding.h"
#include "ports/formats/SurGard.h"
#include "ports/formats/TextTelegram.h"
#include "ports/formats/VirtualReceiver.h"
#include "ports/formats/XmlGateways.h"
#include "ports/mail/MailMessage.h"
#include "runtime/IdleSettings.h"
#include "status/MqttSettings.h"
#include "status/StatusSettings.h"
#include "store/AlarmText.h"
#include "store/StoreSettings.h"
#include "translation/TranslationSettings.h"

namespace nordkeep {
namespace {

constexpr const char* kGeneral = "General";
using enum SettingScope;
using enum SettingKind;

void AddMainTables(SettingCatalogue& known) {
    known.Add(NetworkSettingRows());
    known.Add(EngineSettingRows());
    known.Add(StoreSettingRows());
    known.Add(TranslationSettingRows());
    known.Add(IntakeSettingRows());
    known.Add(PrioritySettingRows());
    known.Add(ResetSettingRows());
    known.Add(SupervisionSettingRows());
    known.Add(DispatchSettingRows());
    known.Add(DeskSettingRows());
    known.Add(TorvexSettingRows());
    known.Add(OutputSettingRows());
    known.Add(ComCallSettingRows());
    known.Add(ViewStateRows());
    known.Add(ConsoleSettingRows());
    known.Add(CommentSettingRows());
    known.Add(PictureSettingRows());
    known.Add(PrinterSettingRows());
    known.Add(AlarmPageSettingRows());
    known.Add(StatusSettingRows());
    known.Add(MqttSettingRows());
    known.Add(IdleSettingRows());
}

void AddPortTables(SettingCatalogue& known) {
    known.Add(PortSettingRows());
    known.Add(LineSettingRows());
    known.Add(EventPortRows());
    known.Add(CallSettingRows());
    known.Add(Dc09CallerRows());
    known.Add(Dc09SettingRows());
    known.Add(GoogolSettingRows());
    known.Add(GsmSettingRows());
    known.Add(MailSettingRows());
    known.Add(MultiComSettingRows());
    known.Add(PollSettingRows());
    known.Add(Pop3SettingRows());
    known.Add(RobofonExportSettingRows());
    known.Add(RobofonSettingRows());
    known.Add(Rsm02SettingRows());
    known.Add(SiaSettingRows());
    known.Add(SmsSettingRows());
    known.Add(SmtpSettingRows());
    known.Add(SurGardSettingRows());
    known.Add(TextCleaningRows());
    known.Add(TextTelegramSettingRows());
    known.Add(XmlGatewaySettingRows());
}

KnownSetting Key(TextView section, const char* key, SettingScope scope, SettingKind kind,
                 const char* byDefault) {
    return {.section = Text(section), .key = key, .scope = scope, .kind = kind, .byDefault = byDefault};
}

KnownSetting Family(TextView section, const char* key, SettingKind kind, int low, int high) {
    return {.section = Text(section), .key = key, .kind = kind, .low = low, .high = high, .isFamily = true};
}

KnownSetting ColorBehaviour() {
    KnownSetting known = Key(kGeneral, "AlarmColorBehaviour", Workstation, Number, "0");
    known.low = 0;
    known.high = 3;
    return known;
}

/// The sections of the lists, each with the widths of its columns.
void AddLists(SettingCatalogue& known) {
    constexpr int kMostColumns = 99;
    for (const TextView list : {kUnackedSection, kAckedSection, kSysLogSection, kIdCodesSection,
                                kTypesSection, kDataCodesSection, kLinesSection}) {
        known.Add(Family(list, "Column", Number, 1, kMostColumns));
        known.Add(Key(list, kSortedByKey, Workstation, Number, "0"));
    }
    for (const TextView list : {kUnackedSection, kAckedSection}) {
        KnownSetting columns = Key(list, "Columns", Workstation, Words, "");
        columns.byDefault = DefaultColumns();
        known.Add(std::move(columns));
        known.Add(Key(list, "DoubleClickShowsMap", Workstation, Switch, "0"));
    }
}

void AddOthers(SettingCatalogue& known) {
    constexpr int kMostLines = 999;
    known.Add(Key(kGeneral, "Language", Workstation, Words, ""));
    known.Add(Key(kGeneral, "NextAlarmId", Centre, Number, "0"));
    known.Add(Key(kGeneral, "IgnoreMultipleInstances", Workstation, Switch, "0"));
    known.Add(ColorBehaviour());
    known.Add(Family(kGeneral, "ColorState_", Words, 0, 9));
    known.Add(Family("PrinterPorts", "LPT", Words, 1, kMostLines));
    known.Add(Family("SerialPorts", "COM", Words, 1, kMostLines));
    known.Add(Key(kGeneral, "PortDisable", Port, Words, "0"));
    known.Add(Key(kGeneral, "TestTelegramAlarmCode", Port, Words, ""));
    known.Add(Key(kGeneral, "TestTelegramRestoreCode", Port, Words, ""));
}

}  // namespace

const SettingCatalogue& KnownSettings() {
    static const SettingCatalogue known = [] {
        SettingCatalogue made;
        AddMainTables(made);
        AddPortTables(made);
        AddLists(made);
        AddOthers(made);
        return made;
    }();
    return known;
}

}  // namespace nordkeep
