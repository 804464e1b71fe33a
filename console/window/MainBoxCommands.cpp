#include "console/window/MainBox.h"
#include "runtime/Fields.h"

#include <algorithm>

namespace nordkeep {
namespace {

constexpr int kDefaultDelimiter = 9;

}  // namespace

Text MainBox::CaptionOfCommand(Command command) const {
    return needs_.captions(CaptionOf(command));
}

void MainBox::Run(Command command, int item) {
    Recalc();
    if (!StateOf(command).isEnabled) return;
    using C = Command;
    const ConsoleEffects& effects = needs_.effects;
    switch (command) {
        case C::CloseAll:
        case C::MenuAckAll:
            needs_.commands.AckAll(needs_.lists.Unacked().IsFiltered());
            break;
        case C::CloseAlarm:
        case C::PopupClose:
            needs_.commands.CloseSelected(KeysInOrder(Tab::Unacked));
            break;
        case C::PopupArchive:
            needs_.commands.ArchiveSelected(KeysInOrder(Tab::Acked));
            break;
        case C::SoundStop:
        case C::FileSoundStop:
            effects.silenceSound();
            break;
        case C::ShowLast:
            ToggleShowLast();
            break;
        case C::PrintSelected:
        case C::PopupPrint:
        case C::FilePrint:
            PrintList();
            break;
        case C::ShowComments:
        case C::PopupComments:
            OpenSheet();
            break;
        case C::EditIDCodes:
        case C::TranslationEdit:
            effects.editTranslation("Settings\\" + tree_.SelectedSet() + ".IDCode");
            break;
        case C::EditTypes:
            effects.editTranslation("Settings\\" + tree_.SelectedSet() + ".TypeCode");
            break;
        case C::Update:
        case C::MenuUpdate:
            effects.update();
            break;
        case C::ShowMap:
        case C::MapOfAlarm:
            OpenMapOfSelected();
            break;
        case C::FileLogin:
            effects.login();
            break;
        case C::FileLogout:
            effects.logout();
            break;
        case C::MenuShowLast:
            Toggle(&ViewState::AlwaysShowLastAlarm);
            break;
        case C::SetClock:
            effects.setClock();
            break;
        case C::FileSetup:
            effects.showSettings();
            break;
        case C::Exit:
            effects.exit();
            break;
        case C::SimAlarm:
            effects.simulateAlarm();
            break;
        case C::Sim100Alarms:
            effects.simulate100Alarms();
            break;
        case C::LoadEvents:
            effects.loadEvents();
            break;
        case C::ShowSysLog:
            Toggle(&ViewState::ShowSysLog);
            break;
        case C::ShowDebug:
            Toggle(&ViewState::ShowDebug);
            break;
        case C::ShowIdCodes:
            Toggle(&ViewState::ShowIdCodes);
            break;
        case C::ShowTypes:
            Toggle(&ViewState::ShowTypes);
            break;
        case C::ShowDataCodes:
            Toggle(&ViewState::ShowDataCodes);
            break;
        case C::TabAutomatic:
            Toggle(&ViewState::ShowTabAutomatic);
            break;
        case C::PrinterFont:
            effects.choosePrinterFont();
            break;
        case C::ShiftHandover:
            effects.showShiftList();
            break;
        case C::About:
            effects.showAbout();
            break;
        case C::SelectAll:
        case C::PopupCopy:
        case C::Keys:
            break;  // the window's own: its rows, its clipboard, its sheet of keys
        default:
            RunOnObject(command, item);
    }
    infoOf_.clear();
    Recalc();
}

void MainBox::Toggle(bool ViewState::*item) {
    inputs_.checked.*item = !(inputs_.checked.*item);
}

// Both go on unless both are on.
void MainBox::ToggleShowLast() {
    ViewState& checked = inputs_.checked;
    const bool isOn = checked.AlwaysShowLastAlarm && checked.ShowTabAutomatic;
    checked.AlwaysShowLastAlarm = checked.ShowTabAutomatic = !isOn;
}

void MainBox::PrintList() {
    const Tab tab = inputs_.tab;
    const AlarmRows* list = AlarmList(tab);
    if (!list) return;
    std::vector<Text> keys = KeysInOrder(tab);
    if (keys.empty()) {
        for (int row = 0; row < list->RowCount(); ++row) keys.push_back(list->KeyOf(row));
    }
    needs_.effects.print(*list, keys);
}

void MainBox::OpenSheet() {
    if (inputs_.tab == Tab::IdCodes) return RunOnObject(Command::ObjectComments, 0);
    if (const cAlarm* alarm = CurrentAlarm()) {
        needs_.windows.OpenAlarmSheet(alarm->m_FilePointer, OpenedBy::Operator);
    }
}

void MainBox::OpenMapOfSelected() {
    if (inputs_.tab == Tab::IdCodes) {
        const cIDCode* object = objects_.FindObject(CurrentKey(Tab::IdCodes));
        if (object) needs_.windows.OpenMap(object->m_MapName, 0, OpenedBy::Operator);
        return;
    }
    const cAlarm* alarm = AlarmOfMap();
    if (!alarm) return;
    needs_.windows.OpenMap(alarm->m_TranslatedMapName, alarm->m_FilePointer, OpenedBy::Operator);
}

Text MainBox::CopyText(Tab tab) const {
    const AlarmRows* list = const_cast<MainBox*>(this)->AlarmList(tab);
    if (!list) return {};
    const int code = needs_.settings.AlarmCopyDelimiter;
    const char delimiter = static_cast<char>(code >= 0 && code <= 255 ? code : kDefaultDelimiter);
    Text text;
    for (const Text& key : KeysInOrder(tab)) {
        text.append(list->Line(list->RowOf(key), delimiter)).append("\r\n");
    }
    return text;
}

}  // namespace nordkeep
