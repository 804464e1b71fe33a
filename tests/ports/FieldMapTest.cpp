#include "pipeline/EventPort.h"
#include "ports/FieldMap.h"
#include "store/Alarm.h"
#include "tests/doubles/TempFolder.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

const OleDate kReceived = OleDate::FromCivil({2025, 11, 21, 6, 5, 4});

/// A record after the field map of this section has gone over it.
cAlarm Mapped(const Text& section, const Text& document) {
    TempFolder folder;
    folder.Write("Settings\\PortX.ini", "[Map]\r\n" + section);
    const Settings files(folder.Tree());
    EventPort port;
    port.PortName = "PortX";
    cAlarm alarm;
    alarm.m_TimeStamp = kReceived;
    alarm.m_ExtraText = "before";
    FieldMap(files).ApplyXmlFieldMap(port, alarm, "Map", document);
    return alarm;
}

TEST(FieldMap, FillsFieldsFromElements) {
    struct Case {
        const char* format;
        const char* document;
        const char* result;
    };
    for (const Case& c : {
             Case{"", "<A>x</A>", "before"},
             Case{"[A]", "<A>x</A>", "x"},
             Case{"[a]/[B]", "<A>x</A><b>y</B>", "x/y"},
             Case{"[Unknown]", "<A>x</A>", ""},
             Case{"[65][0]", "", "A"},
             Case{"[65]", "<65>x</65>", "x"},
             Case{"[A:1-2]", "<A>abcd</A>", "bc"},
             Case{"[A::3]|", "<A>x</A>", "x  |"},
             Case{"[CU:=][A]", "<A>k=v</A>", "v"},
             Case{"[CF:=][R:k:q][A]", "<A>k=v</A>", "Q"},
             Case{"[A]", "<A>[B]</A><B>x</B>", "[B]"},
         }) {
        EXPECT_EQ(Mapped("ExtraText=" + Text(c.format) + "\r\n", c.document).m_ExtraText, c.result)
            << c.format << " " << c.document;
    }
}

TEST(FieldMap, TakesTheTimeOnlyWhenToldAndWhenItIsOne) {
    const Text on = "ParseTimeStampFromXML=1\r\nTransmitterTime=[T]\r\n";
    const auto timeOf = [](const Text& section, const Text& time) {
        return Mapped(section, "<T>" + time + "</T>").m_TimeStamp;
    };
    EXPECT_EQ(timeOf(on, "2002-05-28 11:35:20.022"), OleDate::FromCivil({2002, 5, 28, 11, 35, 20}));
    for (const char* wrong : {"", "yesterday", "2002-13-28 11:35:20", "28/05/2002 11:35"}) {
        EXPECT_EQ(timeOf(on, wrong), kReceived) << wrong;
    }
    EXPECT_EQ(timeOf("TransmitterTime=[T]\r\n", "2002-05-28 11:35:20"), kReceived);
}

}  // namespace
}  // namespace nordkeep
