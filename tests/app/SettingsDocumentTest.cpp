#include "app/EngineSettings.h"
#include "console/boxes/CommentSettings.h"
#include "console/boxes/PictureSettings.h"
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
#include "ports/formats/CallerIdentity.h"
#include "ports/formats/GoogolT1.h"
#include "ports/formats/MailMessage.h"
#include "ports/formats/MultiCom.h"
#include "ports/formats/Robofon.h"
#include "ports/formats/RobofonExport.h"
#include "ports/formats/Rsm02.h"
#include "ports/formats/SiaDecoding.h"
#include "ports/formats/SurGard.h"
#include "ports/formats/TextTelegram.h"
#include "ports/formats/VirtualReceiver.h"
#include "ports/formats/XmlGateways.h"
#include "runtime/IdleSettings.h"
#include "store/StoreSettings.h"
#include "translation/TranslationSettings.h"

#include <gtest/gtest.h>

#include <fstream>
#include <map>

namespace nordkeep {
namespace {

/// "file section key" to the default, as the code has it.
using Keys = std::map<Text, Text>;

template <class Struct>
void Add(Keys& keys, std::span<const SettingRow<Struct>> rows) {
    for (const SettingRow<Struct>& row : rows) {
        const char* file = row.scope == SettingScope::Port ? "port " : "main ";
        const Text byDefault = DefaultText(row);
        const auto [known, isNew] = keys.emplace(file + Text(row.section) + " " + row.key, byDefault);
        EXPECT_TRUE(isNew || known->second == byDefault) << row.key << " has two defaults";
    }
}

Keys KeysOfTheTables() {
    Keys keys;
    Add(keys, AlarmPageSettingRows());
    Add(keys, CommentSettingRows());
    Add(keys, PictureSettingRows());
    Add(keys, PrinterSettingRows());
    Add(keys, CallSettingRows());
    Add(keys, ConsoleSettingRows());
    Add(keys, DeskSettingRows());
    Add(keys, DispatchSettingRows());
    Add(keys, EngineSettingRows());
    Add(keys, EventPortRows());
    Add(keys, GoogolSettingRows());
    Add(keys, GsmSettingRows());
    Add(keys, IdleSettingRows());
    Add(keys, IntakeSettingRows());
    Add(keys, LineSettingRows());
    Add(keys, MailSettingRows());
    Add(keys, MultiComSettingRows());
    Add(keys, NetworkSettingRows());
    Add(keys, OutputSettingRows());
    Add(keys, ComCallSettingRows());
    Add(keys, PollSettingRows());
    Add(keys, PortSettingRows());
    Add(keys, Pop3SettingRows());
    Add(keys, PrioritySettingRows());
    Add(keys, ResetSettingRows());
    Add(keys, RobofonExportSettingRows());
    Add(keys, RobofonSettingRows());
    Add(keys, Rsm02SettingRows());
    Add(keys, SiaSettingRows());
    Add(keys, SmsSettingRows());
    Add(keys, SmtpSettingRows());
    Add(keys, StoreSettingRows());
    Add(keys, SupervisionSettingRows());
    Add(keys, SurGardSettingRows());
    Add(keys, TextCleaningRows());
    Add(keys, TextTelegramSettingRows());
    Add(keys, TorvexSettingRows());
    Add(keys, TranslationSettingRows());
    Add(keys, ViewStateRows());
    Add(keys, XmlGatewaySettingRows());
    return keys;
}

/// The cells of a row "| a | b |".
std::vector<Text> Cells(const Text& row) {
    std::vector<Text> cells;
    std::size_t start = 2;
    for (std::size_t end = row.find(" |", start); end != Text::npos; end = row.find(" |", start)) {
        cells.push_back(row.substr(start, end - start));
        start = end + 3;
    }
    return cells;
}

/// The same of the document: rows "| section | `key` | default | ..." below a heading that names the file.
Keys KeysOfTheDocument() {
    Keys keys;
    std::ifstream file(NORDKEEP_SOURCE_DIR "/docs/settings.md");
    Text prefix;
    for (Text line; std::getline(file, line);) {
        if (line.starts_with("## ")) prefix = line.find("Port") != Text::npos ? "port " : "main ";
        if (!line.starts_with("| ") || line.find('`') == Text::npos) continue;
        const std::vector<Text> cells = Cells(line);
        const Text key = ReplaceAll(cells.at(1), "`", "");
        const Text byDefault = ReplaceAll(ReplaceAll(cells.at(2), "\\|", "|"), "`", "");
        keys[prefix + cells.at(0) + " " + key] = byDefault == "empty" ? Text() : byDefault;
    }
    return keys;
}

TEST(SettingsDocument, TellsEveryKeyAndItsDefault) {
    const Keys tables = KeysOfTheTables();
    const Keys document = KeysOfTheDocument();
    EXPECT_GT(tables.size(), 100u);
    for (const auto& [key, byDefault] : tables) {
        if (std::getenv("NORDKEEP_LIST_SETTINGS"))
            std::printf("KEY\t%s\t%s\n", key.c_str(), byDefault.c_str());
        EXPECT_TRUE(document.contains(key)) << key;
        if (!document.contains(key)) continue;
        EXPECT_EQ(document.at(key), byDefault) << key;
    }
    for (const auto& [key, byDefault] : document)
        EXPECT_TRUE(tables.contains(key)) << key << " is in no table";
}

}  // namespace
}  // namespace nordkeep
