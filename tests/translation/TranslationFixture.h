#pragma once

#include "tests/doubles/ManualTime.h"
#include "tests/doubles/TempFolder.h"
#include "translation/AliveScan.h"
#include "translation/ObjectLookup.h"
#include "translation/ReloadWatch.h"

#include <gtest/gtest.h>

namespace nordkeep {

/// Writes down, in one list, what a screen, the clients and the other receivers are told.
class Witness : public ObjectViews, public ObjectReplica, public SilenceAlarm, public TelegramExport {
 public:
    void UpdateObjectTreeEntry(cTranslate&, cIDCode& object) override { Note("row", object); }
    void RecalcAliveTestView() override { seen.push_back("tree states"); }
    void ClearTree() override { seen.push_back("tree cleared"); }
    void RebuildTree() override { seen.push_back("tree built"); }
    void SendObjectUpdate(const cTranslate&, const cIDCode& object) override { Note("update", object); }
    void SendServiceMode(const cTranslate&, const cIDCode& object) override { Note("mode", object); }
    void SendAliveTestReset(const cTranslate&, const cIDCode& object) override { Note("reset", object); }
    void RaiseSilenceAlarm(cTranslate& set, cIDCode& object, int test, OleDate) override {
        alarms.push_back(set.m_FileName + " " + object.m_IdCode + " " + std::to_string(test));
        if (onAlarm) onAlarm();
    }
    void ExportTelegram(const Text& alarmCode, const Text& protocol) override {
        seen.push_back("export " + alarmCode + " " + protocol);
    }

    std::vector<Text> seen{};
    std::vector<Text> alarms{};
    std::function<void()> onAlarm{};

 private:
    void Note(TextView what, const cIDCode& object) { seen.push_back(Text(what) + " " + object.m_IdCode); }
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
    std::vector<Text> Codes() const {
        std::vector<Text> codes;
        for (const auto& object : translations.Sets().at(0)->m_IdCodes) codes.push_back(object->m_IdCode);
        return codes;
    }

    TempFolder folder{};
    ManualTime time{OleDate::FromCivil({2026, 3, 10, 10, 0, 0})};
    Settings files{folder.Tree()};
    Language language{};
    SysLog log{folder.Tree(), time};
    std::vector<Text> logged{};
    Witness witness{};
    TranslationSettings settings{};
    AliveTestTimers timers{settings, AliveTestPace::Minutes, log};
    Translations translations{{folder.Tree(), files, language, time, log, witness, settings, timers}};
    ServicePeriods periods{{folder.Tree(), witness, witness, settings}};
    AliveScan scan{{translations, periods, witness, witness, witness, witness, time, settings, timers}};
    PortBinding port{};
};

}  // namespace nordkeep
