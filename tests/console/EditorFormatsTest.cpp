#include "console/editors/EventCodeFormat.h"
#include "console/editors/FieldMapFormat.h"
#include "console/editors/ObjectFormat.h"
#include "console/editors/ScheduleForm.h"
#include "console/editors/SetsBox.h"
#include "console/editors/UserFormat.h"
#include "tests/console/SheetWorld.h"

#include <gtest/gtest.h>

#include <fstream>

namespace nordkeep {
namespace {

struct FormatsWorld : ConsoleWorld {
    FormatsWorld() {
        std::ifstream file(NORDKEEP_SOURCE_DIR "/languages/NK_Lang.044", std::ios::binary);
        language.LoadFrom(Text{std::istreambuf_iterator<char>(file), {}});
    }
    std::unique_ptr<RowsBox> Open(const RowFormat& format, bool isOnServerOnly = false) {
        auto box = std::make_unique<RowsBox>(RowsBox::Needs{.files = dataFiles,
                                                            .dialogs = dialogs,
                                                            .captions = captions,
                                                            .state = *this,
                                                            .host = host,
                                                            .isOnServerOnly = isOnServerOnly},
                                             format);
        box->Load({});
        box->Enter();
        return box;
    }
    Text File(const Text& name) { return folder.Read("Settings\\" + name); }
    RecordingEditorsHost host{};
    RecordingFacts facts{};
};

// --- CSV

struct CsvWorld : FormatsWorld {
    CsvWorld() {
        folder.Write(
            "Settings\\Town.IDCode",
            "FORMAT=1,6,0,0,7,2\r\n100001;Bakery;60;;;;Bageri \xC5;1;0;;;\r\n100002;Pump;;;;;;1;0;;;\r\n");
        objects = Open(format);
    }
    ObjectFormat format{{captions, language, time, host}};
    std::unique_ptr<RowsBox> objects{};
};

TEST(RowsImport, WhatWasExportedComesBackUnchanged) {
    CsvWorld w;
    const std::string csv = w.objects->Export();
    EXPECT_TRUE(csv.starts_with("IdCode,Caller,Name,AliveTest,"));
    EXPECT_NE(csv.find("100001,,Bakery,60,,,,Bageri \xC3\x85,1,0,,\r\n"), std::string::npos);
    const auto plan = w.objects->PlanImport(csv);
    EXPECT_EQ(plan.same, 2u);
    EXPECT_TRUE(plan.step.empty());
    EXPECT_EQ(plan.fault, "");
}

TEST(RowsImport, ChangesNamedColumnsOnlyAndIsOneStep) {
    CsvWorld w;
    const std::string csv =
        "\xEF\xBB\xBFidcode;Name;Colour\n100001;\"Bakery; the \"\"old\"\" one\";red\n100003;New\n\n";
    const auto plan = w.objects->PlanImport(csv);
    EXPECT_EQ(plan.fault, "");
    EXPECT_EQ(plan.changed, 1u);
    EXPECT_EQ(plan.added, 1u);
    EXPECT_EQ(plan.notInFile, 1u);
    EXPECT_EQ(plan.unknown, std::vector<Text>{"Colour"});
    EXPECT_EQ(plan.preview.size(), 2u);
    EXPECT_FALSE(w.objects->IsChanged()) << "a plan changes nothing";
    w.objects->Import(csv);
    EXPECT_EQ(w.objects->Table().RowCount(), 3);
    w.objects->Apply();
    EXPECT_EQ(w.File("Town.IDCode"),
              "FORMAT=1,6,0,0,7,2\r\n100001;Bakery, the \"old\" one;60;;;;Bageri \xC5;1;0;;;\r\n"
              "100002;Pump;;;;;;1;0;;;\r\n100003;New;;;;;;1;0;;;\r\n");
    w.objects->Undo();
    EXPECT_EQ(w.objects->Table().RowCount(), 2);
}

TEST(RowsImport, RefusesWhatItWouldHaveToGuess) {
    CsvWorld w;
    for (const char* csv : {"", "Name\nx\n", "IdCode,Name\n1,2,3\n", "IdCode\n1\n1\n", "IdCode,Name\n,x\n",
                            "IdCode,Name\n1,\"open\n", "IdCode,Name\n1,\xE2\x98\xA0\n", "IdCode\n1,\xFF\n"}) {
        EXPECT_NE(w.objects->PlanImport(csv).fault, "") << csv;
        w.objects->Import(csv);
        EXPECT_FALSE(w.objects->IsChanged()) << csv;
    }
}

// --- Alive tests

TEST(ScheduleForm, IsFilledInAndWrittenAlike) {
    const struct {
        const char* before;
        const char* after;
    } rows[] = {{"", ""},
                {"0", ""},
                {"1440", "1440"},
                {"abc", "abc"},
                {"08:00:00", "08:00:00"},
                {"07:00:00-09:00:00, 16:00:00-18:00:00", "07:00:00-09:00:00,16:00:00-18:00:00"},
                {"00:00:00-06:00:00,22:00:00-24:00:00", "22:00:00-24:00:00,00:00:00-06:00:00"}};
    for (const auto& row : rows) EXPECT_EQ(ScheduleOf(FormOfSchedule(row.before)), row.after);
}

TEST(ObjectFormat, SaysUntilWhenAnObjectIsWaitedFor) {
    CsvWorld w;
    EXPECT_NE(w.objects->Fields()[kObjectSchedule].help.find(w.captions(4806, {""}).substr(0, 10)),
              Text::npos);
    w.objects->Type(kObjectSchedule, "abc");
    EXPECT_EQ(w.objects->Fields()[kObjectSchedule].help.find(w.captions(4806, {""}).substr(0, 10)),
              Text::npos);
}

// --- Files of sections

TEST(EventCodeFormat, KeepsSectionsCommentsAndQuotes) {
    FormatsWorld w;
    w.folder.Write("Settings\\Town.IDCode", "");
    w.folder.Write(
        "Settings\\Town.DataCode",
        "; by hand\r\n[Event]\r\nBA=Burglary;BR;1\r\n130=Zone;Z;1\r\n\r\n[Other]\r\nx=y\r\n[Modifiers]\r\n"
        "ri=\"area \"\r\n");
    const EventCodeFormat format(w.language);
    const auto codes = w.Open(format);
    ASSERT_EQ(codes->Table().RowCount(), 3);
    EXPECT_EQ(codes->Fields()[3].typed, "BR");
    codes->Select(codes->Table().KeyOf(2));
    EXPECT_EQ(codes->Fields()[2].typed, "area ");
    codes->Type(2, "zone ");
    codes->Add();
    codes->Type(1, "BR");
    codes->Type(2, "Burglary; over");
    codes->Add();
    codes->Type(0, "Environmental");
    codes->Type(1, "TA");
    codes->Type(4, "2");
    codes->Apply();
    EXPECT_EQ(w.File("Town.DataCode"),
              "; by hand\r\n[Event]\r\nBA=Burglary;BR;1\r\n130=Zone;Z;1\r\nBR=Burglary, "
              "over\r\n\r\n[Other]\r\nx=y\r\n"
              "[Modifiers]\r\nri=\"zone \"\r\n[Environmental]\r\nTA=;;2\r\n");
    for (int step = 0; step < 20 && codes->MayUndo(); ++step) codes->Undo();
    EXPECT_EQ(codes->Table().RowCount(), 3);
}

TEST(UserFormat, APasswordIsTypedTwiceAndShownNowhere) {
    FormatsWorld w;
    w.folder.Write("Settings\\Users.INI", "[Users]\r\nanna=Anna Berg,AB,secret,2\r\n");
    const UserFormat format(w.language, w.captions);
    const auto users = w.Open(format, true);
    ASSERT_EQ(users->Table().RowCount(), 1);
    EXPECT_EQ(users->Table().Cell(0, 3), w.captions.FromFile(4866));
    users->Search("secret");
    EXPECT_EQ(users->Table().RowCount(), 0);
    users->Search("");
    users->Select(users->Table().KeyOf(0));
    users->Type(4, "new");
    EXPECT_NE(users->Fields()[5].fault, "");
    users->Type(1, "Anna Berg, chief");
    users->Apply();
    EXPECT_FALSE(users->Notice().isGood);
    EXPECT_EQ(w.File("Users.INI"), "[Users]\r\nanna=Anna Berg,AB,secret,2\r\n");
    users->Type(5, "new");
    users->Apply();
    const Text saved = w.File("Users.INI");
    EXPECT_TRUE(saved.starts_with("[Users]\r\nanna=Anna Berg  chief,AB,$")) << saved;
    EXPECT_TRUE(saved.ends_with(",2\r\n")) << saved;
    users->Type(4, "a,b");
    users->Type(5, "a,b");
    const Text row = users->Export();
    users->Type(2, "AC");
    users->Type(2, "AB");
    EXPECT_EQ(users->Export(), row) << "one hash for what was typed once";
    EXPECT_FALSE(users->HasCsv());
    w.rights.role = Role::Client;
    EXPECT_FALSE(users->IsThere());
}

TEST(FieldMapFormat, EditsTheSectionsOfGatewaysAndNothingElse) {
    FormatsWorld w;
    const Text before = "[General]\r\nPortType=TCPS\r\n[SOSAccessV4_BeforeTranslation]\r\nIdCode=[Id]\r\n";
    w.folder.Write("Settings\\Port1.ini", before);
    const FieldMapFormat format(w.language, {"IdCode", "ExtraText"});
    const auto map = w.Open(format);
    ASSERT_EQ(map->Table().RowCount(), 1);
    map->Add();
    map->Type(0, "SOSAccessV4_AfterTranslation");
    map->Type(1, "ExtraText");
    map->Type(2, "[City], [Street]");
    map->Apply();
    EXPECT_EQ(w.File("Port1.ini"),
              before + "[SOSAccessV4_AfterTranslation]\r\nExtraText=[City], [Street]\r\n");
}

// --- Sets

struct SetsWorld : FormatsWorld {
    SetsWorld() {
        folder.Write("Settings\\Town.IDCode", "; by hand\r\n100001;x;;;;;;;;;\r\nFORMAT=1,6,0,0,7,2\r\n");
        folder.Write("Settings\\Town.TypeCode", "01;1;Fire;;\r\n");
        sets.Load({});
    }
    void Type(TextView key, const Text& value) {
        for (std::size_t number = 0; number < sets.Fields().size(); ++number) {
            if (sets.Fields()[number].key.key == key) sets.Type(number, value);
        }
    }
    SetsBox sets{{.files = dataFiles,
                  .dialogs = dialogs,
                  .captions = captions,
                  .state = *this,
                  .host = host,
                  .facts = facts}};
};

TEST(SetsBox, DrawsTheFormatOverASample) {
    SetsWorld w;
    EXPECT_EQ(w.sets.Table().Cell(0, 1), "Receiver: Robofon");
    w.sets.TypeSample("10000101");
    EXPECT_EQ(w.sets.Outcome(), "Town gets 10000101");
    ASSERT_EQ(w.sets.Cuts().size(), 2u);
    EXPECT_EQ(w.sets.Cuts()[1].start, 6u);
    w.Type("PaddingCount", "10");
    EXPECT_EQ(w.sets.FilledSample(), "0010000101");
    w.Type("TypeCodeStart", "20");
    EXPECT_EQ(w.sets.Cuts().size(), 1u) << "behind the end there is nothing to cut";
    w.Type("IdCodeLength", "0");
    EXPECT_EQ(w.sets.Faults(), 1);
    w.sets.Apply();
    EXPECT_FALSE(w.sets.Notice().isGood) << "no object would be found";
}

TEST(SetsBox, WritesTheDirectivesAndNothingElse) {
    SetsWorld w;
    w.Type("TypeCodeLength", "3");
    w.Type("ZeroTrim", "1");
    w.sets.Apply();
    EXPECT_EQ(w.File("Town.IDCode"),
              "; by hand\r\nFORMAT=1,6,0,0,7,3\r\nZEROTRIM=1\r\n100001;x;;;;;;;;;\r\n");
    EXPECT_EQ(w.host.calls, "keep Settings\\Town.IDCode;saved Settings\\Town.IDCode;");
    EXPECT_FALSE(w.sets.IsChanged());
    w.Type("ZeroTrim", "");
    w.sets.Apply();
    EXPECT_EQ(w.File("Town.IDCode").find("ZEROTRIM"), Text::npos);
}

TEST(SetsBox, MakesNewSetsAndCopies) {
    SetsWorld w;
    int told = 0;
    w.sets.onSets = [&told] { ++told; };
    w.sets.New();
    EXPECT_EQ(w.sets.Faults(), 1) << "it has no name yet";
    w.Type("Name", "town");
    EXPECT_EQ(w.sets.Faults(), 1) << "there is one of that name";
    w.Type("Name", "..\\Village");
    EXPECT_EQ(w.sets.Faults(), 1);
    w.Type("Name", "Village");
    w.sets.Apply();
    EXPECT_EQ(w.File("Village.IDCode"), "FORMAT=1,6,0,0,7,2\r\n");
    EXPECT_EQ(told, 1);
    w.sets.Select(0);
    w.sets.Copy();
    w.Type("Name", "City");
    w.sets.Apply();
    EXPECT_EQ(w.File("City.IDCode"), "; by hand\r\nFORMAT=1,6,0,0,7,2\r\n100001;x;;;;;;;;;\r\n");
    EXPECT_EQ(w.File("City.TypeCode"), "01;1;Fire;;\r\n");
}

TEST(SetsBox, AsksBeforeItGivesASetAnotherName) {
    SetsWorld w;
    w.Type("Name", "Borough");
    w.sets.Apply();
    EXPECT_EQ(w.dialogs.questions.size(), 1u);
    EXPECT_EQ(w.host.calls, "");
    w.dialogs.answers = {true, true};
    w.sets.Apply();
    EXPECT_EQ(w.host.calls, "rename Town Borough;saved Settings\\Borough.IDCode;");
    w.host.canRename = false;
    w.Type("Name", "Elsewhere");
    w.sets.Apply();
    EXPECT_FALSE(w.sets.Notice().isGood);
}

}  // namespace
}  // namespace nordkeep
