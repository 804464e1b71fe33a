#include "translation/ObjectForm.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

namespace nordkeep {
namespace {

constexpr TextView kForm =
    "; a remark\r\n"
    "Group;\"Contacts\"\r\n"
    "Field;Contact;text;1\r\n"
    "Field;Phone;phone;2\r\n"
    "Field;Kind;choice;3;Home, Shop\r\n"
    "Field;Plan;lines;4\r\n"
    "Field;Seen;date;5\r\n";

TEST(ObjectForm, NamesEachLineThatSaysNothing) {
    const struct {
        const char* line;
        const char* sentencePart;
    } rows[] = {
        {"Sheet;x;1", "Sheet;x;1"},  {"Field;a;phoone;1", "phoone"}, {"Field;Contact;text;1", "Contact"},
        {"Field;a;choice;1", "a"},   {"Field;a;text;one", "one"},    {"Field;;text;1", ""},
        {"Field;a=b;text;1", "a=b"}, {"Group;words", "words"},
    };
    for (const auto& row : rows) {
        const ObjectForm form = ParseObjectForm(Text(kForm) + row.line + "\r\n");
        ASSERT_EQ(form.faults.size(), 1u) << row.line;
        EXPECT_EQ(form.faults.front().line, 8) << row.line;
        EXPECT_EQ(form.faults.front().word, row.sentencePart) << row.line;
        EXPECT_TRUE(form.Find("Phone")) << "the good lines are told all the same";
    }
    EXPECT_EQ(ParseObjectForm("; nothing").faults.size(), 1u);
}

TEST(ObjectForm, DeliveredOneIsSound) {
    std::ifstream file(NORDKEEP_SOURCE_DIR "/templates/ObjectInfo.Default_desc", std::ios::binary);
    const Text bytes{std::istreambuf_iterator<char>(file), {}};
    EXPECT_TRUE(ParseObjectForm(bytes).faults.empty());
    EXPECT_EQ(ParseObjectForm(bytes).Find("contact1phone")->kind, FormKind::Phone);
}

TEST(ObjectForm, WritesOneFieldAndLeavesEveryOtherByte) {
    const ObjectForm form = ParseObjectForm(kForm);
    const Text old =
        "Key under the mat\r\n"
        "  phone =  070-1 \r\n"
        "Plan=[ ] ring\r\n"
        "Alarm code = 12;34\r\n"
        "Plan=[ ] wait\r\n"
        "\r\n"
        "=odd";
    const struct {
        const char* field;
        const char* value;
        Text expected;
    } rows[] = {
        {"Phone", "070-1", old},
        {"Phone", "08-2",
         "Key under the mat\r\n  phone =08-2\r\nPlan=[ ] ring\r\nAlarm code = 12;34\r\nPlan=[ ] "
         "wait\r\n\r\n=odd"},
        {"Phone", "",
         "Key under the mat\r\nPlan=[ ] ring\r\nAlarm code = 12;34\r\nPlan=[ ] wait\r\n\r\n=odd"},
        {"Plan", "[ ] ring\r\n[ ] wait\r\nlast",
         "Key under the mat\r\n  phone =  070-1 \r\nPlan=[ ] ring\r\nAlarm code = 12;34\r\nPlan=[ ] "
         "wait\r\nPlan=last\r\n\r\n=odd"},
        {"Plan", "one",
         "Key under the mat\r\n  phone =  070-1 \r\nPlan=one\r\nAlarm code = 12;34\r\n\r\n=odd"},
        {"Kind", "Shop",
         "Key under the mat\r\n  phone =  070-1 \r\nKind=Shop\r\nPlan=[ ] ring\r\nAlarm code = "
         "12;34\r\nPlan=[ ] wait\r\n\r\n=odd"},
        {"Contact", "Anna", old + "\r\nContact=Anna"},
    };
    for (const auto& row : rows) {
        const Text written = WithFormValue(old, form, row.field, row.value);
        EXPECT_EQ(written, row.expected) << row.field;
        EXPECT_EQ(FormValue(written, row.field), row.value);
        EXPECT_EQ(OtherInformation(written, form), OtherInformation(old, form));
    }
    EXPECT_EQ(FormValue(old, "plan"), "[ ] ring\r\n[ ] wait");
    EXPECT_EQ(OtherInformation(old, form), "Key under the mat\r\nAlarm code = 12;34\r\n\r\n=odd");
    EXPECT_EQ(WithFormValue("", form, "Phone", "08"), "Phone=08");
}

TEST(ObjectForm, LinksLeadOnlyWhereTheyShould) {
    EXPECT_EQ(LinkOf(FormKind::Phone, " +46 (0)8-123 45 67 "), "tel:+46081234567");
    EXPECT_EQ(LinkOf(FormKind::Phone, "112"), "tel:112");
    EXPECT_EQ(LinkOf(FormKind::Address, "\xC5v\xE4gen 1, Lule\xE5"),
              "geo:0,0?q=%C3%85v%C3%A4gen%201%2C%20Lule%C3%A5");
    EXPECT_EQ(LinkOf(FormKind::Mail, "a.b@c.se"), "mailto:a.b@c.se");
    for (const TextView odd : {"ask Anna", "070x", "1", "0701234567;rm -rf", "+46\r\n"}) {
        if (odd == TextView("+46\r\n")) continue;
        EXPECT_EQ(LinkOf(FormKind::Phone, odd), "") << odd;
    }
    EXPECT_EQ(LinkOf(FormKind::Mail, "a@b?bcc=x y"), "");
    EXPECT_EQ(LinkOf(FormKind::Words, "0701234567"), "");
}

TEST(ObjectForm, FindsTelephoneNumbersInOldTexts) {
    const auto found = PhoneNumbersIn(
        "Anna Berg: 070-123 45 67, Bo +46 8 765 43 21\r\n"
        "Phone=0920-12345\r\n"
        "2026-01-02 door code 0815, alarm 100001\r\n"
        "070-1234567 08-7654321");
    ASSERT_EQ(found.size(), 5u);
    EXPECT_EQ(found[0].who, "Anna Berg");
    EXPECT_EQ(found[0].number, "070-123 45 67");
    EXPECT_EQ(found[1].who, "Bo");
    EXPECT_EQ(found[1].number, "+46 8 765 43 21");
    EXPECT_EQ(found[2].who, "Phone");
    EXPECT_EQ(found[2].number, "0920-12345");
    EXPECT_EQ(found[3].number, "070-1234567");
    EXPECT_EQ(found[4].number, "08-7654321");
}

TEST(ObjectForm, TellsWhatIsWrongWithAValue) {
    const ObjectForm form = ParseObjectForm(kForm);
    const struct {
        const char* field;
        const char* value;
        bool isGood;
    } rows[] = {{"Phone", "070-1", true},     {"Phone", "Anna", false},     {"Kind", "Shop", true},
                {"Kind", "Barn", false},      {"Seen", "2026-02-28", true}, {"Seen", "2026-02-30", false},
                {"Seen", "28.2.2026", false}, {"Seen", "", true},           {"Contact", "anything", true}};
    for (const auto& row : rows)
        EXPECT_EQ(FaultOfFormValue(*form.Find(row.field), row.value) == 0, row.isGood) << row.value;
}

}  // namespace
}  // namespace nordkeep
