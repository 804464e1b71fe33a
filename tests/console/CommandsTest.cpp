#include "console/window/Commands.h"
#include "tests/console/MainBoxWorld.h"

#include <gtest/gtest.h>

#include <set>

namespace nordkeep {
namespace {

TEST(Commands, AreEnabledByTheirOwnRuleAndTheRight) {
    CommandInputs all;
    all.checked = {.ShowIdCodes = true};
    all.unackedRows = 1;
    all.isUnackedSelected = all.isAckedSelected = all.hasCurrentAlarm = all.hasMap = true;
    all.isSetSelected = all.isObjectSelected = all.isSounding = all.hasGoogolPort = true;
    struct Row {
        const char* what;
        std::function<void(CommandInputs&)> change;
        std::set<Command> toolBar;
    };
    using C = Command;
    const std::set<C> always = {C::SoundStop, C::ShowLast, C::Update, C::ShowMap};
    const auto with = [&](std::set<C> more) {
        more.insert(always.begin(), always.end());
        return more;
    };
    const std::set<C> unacked = with({C::CloseAll, C::CloseAlarm, C::PrintSelected, C::ShowComments});
    const Row rows[] = {
        {"new alarms", [](auto&) {}, unacked},
        {"last row gone", [](auto& in) { in.unackedRows = 0, in.isUnackedSelected = false; }, always},
        {"nothing selected", [](auto& in) { in.isUnackedSelected = false; }, with({C::CloseAll})},
        {"old alarms", [](auto& in) { in.tab = Tab::Acked; }, with({C::PrintSelected, C::ShowComments})},
        {"no list button on the debug page", [](auto& in) { in.tab = Tab::Debug; }, always},
        {"objects", [](auto& in) { in.tab = Tab::IdCodes; },
         with({C::ShowComments, C::EditIDCodes, C::SetService})},
        {"types", [](auto& in) { in.tab = Tab::Types; }, with({C::EditTypes})},
        {"quiet",
         [](auto& in) { in.isSounding = false, in.hasMap = false, in.tab = Tab::Debug; },
         {C::ShowLast, C::Update}},
        {"nobody at a client",
         [](auto& in) {
             in.rights = {Role::Client, 0};
         },
         {C::SoundStop}},
        {"operator at a client",
         [](auto& in) {
             in.rights = {Role::Client, 1};
         },
         unacked},
        {"operator without editors",
         [](auto& in) {
             in.rights = {Role::Client, 1}, in.tab = Tab::Types;
         },
         always},
        {"editor",
         [](auto& in) {
             in.rights = {Role::Client, 3}, in.tab = Tab::Types;
         },
         with({C::EditTypes})},
        {"no contact",
         [](auto& in) {
             in.rights = {Role::Client, 3, true};
         },
         with({C::PrintSelected, C::ShowComments})},
    };
    for (const Row& row : rows) {
        CommandInputs inputs = all;
        row.change(inputs);
        const CommandStates states = CalcCommands(inputs);
        for (int number = 0; number < kToolBarButtons; ++number) {
            const auto command = static_cast<Command>(number);
            EXPECT_EQ(states[static_cast<std::size_t>(number)].isEnabled, row.toolBar.contains(command))
                << row.what << ", button " << number;
        }
        EXPECT_TRUE(states[static_cast<std::size_t>(C::FileSoundStop)].isEnabled) << "silence is for anybody";
    }
}

TEST(Commands, LoginIsForClientsAndPressedButtonsNeedBothItems) {
    CommandInputs inputs;
    const auto state = [&](Command command) {
        return CalcCommands(inputs)[static_cast<std::size_t>(command)];
    };
    EXPECT_FALSE(state(Command::FileLogin).isVisible);
    EXPECT_FALSE(state(Command::SimAlarm).isVisible);
    inputs.rights = {Role::Client, 0};
    EXPECT_TRUE(state(Command::FileLogin).isEnabled);
    EXPECT_FALSE(state(Command::FileLogout).isEnabled);
    inputs.checked.AlwaysShowLastAlarm = true;
    EXPECT_FALSE(state(Command::ShowLast).isChecked);
    inputs.checked.ShowTabAutomatic = true;
    EXPECT_TRUE(state(Command::ShowLast).isChecked);
}

TEST(Commands, HaveUniqueKeysAndMnemonics) {
    std::set<Text> keys;
    for (int number = 0; number < kCommandCount; ++number) {
        const Text key = KeysOf(static_cast<Command>(number));
        EXPECT_TRUE(key.empty() || keys.insert(key).second) << key;
    }
    MainBoxWorld world;
    for (const char* language : {"044", "046"}) {
        world.UseLanguage(language);
        const Captions captions(world.language);
        const auto unique = [&](const std::vector<int>& numbers) {
            std::set<char> letters;
            for (const int number : numbers) {
                const Text caption = captions(number);
                const std::size_t mark = caption.find('&');
                if (mark == Text::npos || mark + 1 == caption.size()) continue;
                EXPECT_TRUE(letters.insert(UpperCase(caption[mark + 1])).second)
                    << language << " " << caption;
            }
        };
        std::vector<int> tops;
        for (const MenuRow& menu : MainMenus()) {
            tops.push_back(menu.caption);
            std::vector<int> items;
            for (const int item : menu.items) {
                if (item == kMenuMaps) items.push_back(3047);
                if (item >= 0) items.push_back(CaptionOf(static_cast<Command>(item)));
            }
            unique(items);
        }
        unique(tops);
    }
}

TEST(Tabs, APageThatGoesGivesWayToTheFirst) {
    ViewState checked{.ShowSysLog = true, .ShowDebug = true};
    EXPECT_EQ(CalcVisibility(checked, {}, Tab::Debug).current, Tab::Debug);
    const TabStates floating = CalcVisibility(checked, {.sysLog = false, .debug = true}, Tab::Debug);
    EXPECT_EQ(floating.current, Tab::Unacked);
    EXPECT_TRUE(floating.isDebugWindow);
    EXPECT_FALSE(floating.isVisible[static_cast<std::size_t>(Tab::Debug)]);
    checked.ShowSysLog = false;
    EXPECT_EQ(CalcVisibility(checked, {}, Tab::SysLog).current, Tab::Unacked);
    EXPECT_EQ(CalcVisibility({}, {}, Tab::Acked).current, Tab::Acked);
}

}  // namespace
}  // namespace nordkeep
