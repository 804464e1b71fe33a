#include "ports/formats/XmlText.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

TEST(XmlText, FindsTheFirstElementAndTheFirstEndBehindIt) {
    struct Case {
        const char* text;
        const char* exact;
        const char* anyCase;
    };
    for (const Case& c : {Case{"", "", ""}, Case{"<A>x", "", ""}, Case{"x</A>", "", ""},
                          Case{"</A><A>x</A>", "x", "x"}, Case{"<a>x</A><A>y</a></A>", "y</a>", "x"},
                          Case{"<A><A>x</A></A>", "<A>x", "<A>x"}, Case{"<A b=\"1\">x</A>", "", ""},
                          Case{"<A>&lt;</A>", "&lt;", "&lt;"}, Case{"<AB>x</AB>", "", ""}}) {
        EXPECT_EQ(GetXmlElement(c.text, "A", XmlNames::Exact), c.exact) << c.text;
        EXPECT_EQ(GetXmlElement(c.text, "A", XmlNames::IgnoreCase), c.anyCase) << c.text;
    }
}

}  // namespace
}  // namespace nordkeep
