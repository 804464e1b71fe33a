#pragma once

#include "tests/doubles/ManualTime.h"
#include "tests/doubles/NoServiceNotes.h"
#include "tests/doubles/TempFolder.h"
#include "translation/AliveScan.h"
#include "translation/ObjectLookup.h"
#include "translation/ReloadWatch.h"

#include <gtest/gtest.h>

namespace nordkeep {

using Texts = std::vector<Text>;

/// A time on the day of the tests.
inline OleDate At(int hour, int minute = 0, int second = 0) {
    return OleDate::FromCivil({2026, 3, 10, hour, minute, second});
}

/// Writes down, in one list, what a screen, the clients and the other receivers are told.
class Witness : public ObjectViews, public ObjectReplica, public SilenceAlarm, public TelegramExport {
 public:
    void UpdateObjectTreeEntry(cTranslate&, cIDCode& object) override { Note("row " + object.m_IdCode); }
    void RecalcAliveTestView() override { Note("tree states"); }
    void ClearTree() override { Note("tree cleared"); }
    void RebuildTree() override { Note("tree built"); }
    void SendObjectUpdate(const cTranslate&, const cIDCode& object) override {
        Note("update " + object.m_IdCode);
    }
    void SendServiceMode(const cTranslate&, const cIDCode& object) override {
        Note("mode " + object.m_IdCode);
    }
    void SendAliveTestReset(const cTranslate&, const cIDCode& object) override {
        Note("reset " + object.m_IdCode);
    }
    void ExportTelegram(const Text& code, const Text& protocol) override {
        Note("export " + code + " " + protocol);
    }
    void RaiseSilenceAlarm(cTranslate& set, cIDCode& object, int test, OleDate) override {
        alarms.push_back(set.m_FileName + " " + object.m_IdCode + " " + std::to_string(test));
        if (onAlarm) onAlarm();
    }

    std::vector<Text> seen{};
    std::vector<Text> alarms{};
    std::function<void()> onAlarm{};

 private:
    void Note(Text what) { seen.push_back(std::move(what)); }
};

/// A data folder with one port, and everything of translation and supervision built on it.
class TranslationFixture : public ::testing::Test {
 protected:
    TranslationFixture() {
        folder.MakeFolders("Settings");
        folder.MakeFolders("Data");
        log.SetRowListener([this](const LogRow& row) { logged.push_back(row.text); });
        port.portName = "Port1";
    }

    void WriteSet(TextView set, TextView objects, TextView types = {}) {
        folder.Write(Text("Settings\\").append(set).append(".IDCode"), objects);
        folder.Write(Text("Settings\\").append(set).append(".TypeCode"), types);
    }
    void BindPort(TextView translateKeys) {
        folder.Write("Settings\\Port1.ini", Text("[Translate]\r\n").append(translateKeys));
    }
    void Reload() {
        PortBinding* ports[] = {&port};
        translations.ReloadAllTranslations(true, ports);
        translations.DeleteLastEvents();
    }
    /// One set "A" on the port, with these objects.
    cTranslate& LoadSet(TextView objects) {
        WriteSet("A", objects);
        BindPort("Robofon=A");
        Reload();
        return *translations.Sets().at(0);
    }
    cIDCode& Object(TextView code) { return *FindExactObject(*translations.Sets().at(0), code); }
    OleDate Expiration(TextView code, int test = 1) {
        return Object(code).GetNextAliveTestExpirationTime(test);
    }
    Texts Codes() const {
        Texts codes;
        for (const auto& object : translations.Sets().at(0)->m_IdCodes) codes.push_back(object->m_IdCode);
        return codes;
    }

    TempFolder folder{};
    ManualTime time{At(10)};
    Settings files{folder.Tree()};
    Language language{};
    SysLog log{folder.Tree(), time};
    std::vector<Text> logged{};
    Witness witness{};
    TranslationSettings settings{};
    AliveTestTimers timers{settings, AliveTestPace::Minutes, log};
    Translations translations{{folder.Tree(), files, language, time, log, witness, settings, timers}};
    NoServiceNotes notes{};
    ServicePeriods periods{{folder.Tree(), witness, witness, settings, notes}};
    AliveScan scan{{translations, periods, witness, witness, witness, witness, time, settings, timers}};
    PortBinding port{};
};

}  // namespace nordkeep
