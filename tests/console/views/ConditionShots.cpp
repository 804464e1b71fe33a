// A picture of every condition as the strip above the lists shows it, for the operator's guide:
// NORDKEEP_CONDITION_SHOTS names the folder that they go to. Without it nothing is drawn.
#include "console/views/lists/ViewParts.h"
#include "console/views/window/ConditionStrip.h"
#include "tests/console/MainBoxWorld.h"

#include <QtWidgets/QApplication>

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

/// What each kind is about in the pictures; the others have no name.
Text NameOf(ConditionKind kind) {
    switch (kind) {
        case ConditionKind::LineFailed:
        case ConditionKind::LineUnusable:
        case ConditionKind::LineShut:
        case ConditionKind::LineHeld:
        case ConditionKind::LineMuted:
        case ConditionKind::LineQuiet:
            return "GSM modem";
        case ConditionKind::PeerLost:
            return "Torvex";
        case ConditionKind::Standby:
            return "10.0.0.2";
        case ConditionKind::FaultsInFiles:
            return "Settings/Town.IDCode";
        case ConditionKind::ServiceEnds:
            return "Bakery";
        default:
            return {};
    }
}

TEST(ConditionShots, AreTaken) {
    const QString folder = qEnvironmentVariable("NORDKEEP_CONDITION_SHOTS");
    if (folder.isEmpty()) GTEST_SKIP() << "only on demand";
    MainBoxWorld world;
    const Captions captions(world.language);
    const OleDate now = OleDate::FromCivil({2026, 11, 22, 21, 14, 7});
    for (int number = 0; number < kConditionKindCount; ++number) {
        const auto kind = static_cast<ConditionKind>(number);
        Conditions conditions(captions);
        conditions.Renew({{.kind = kind, .name = NameOf(kind), .since = now, .count = 3}}, now);
        ConditionStrip strip(captions);
        strip.Show(conditions);
        const QString sentence = ShownLine(conditions.Rows().front().sentence);
        strip.resize(strip.fontMetrics().horizontalAdvance(sentence) + 52, strip.sizeHint().height());
        strip.setFocusPolicy(Qt::NoFocus);
        strip.show();
        QApplication::processEvents();
        const QString file =
            QStringLiteral("%1/condition-%2.png").arg(folder).arg(number, 2, 10, QChar(u'0'));
        EXPECT_TRUE(strip.grab().save(file));
    }
}

}  // namespace
}  // namespace nordkeep
