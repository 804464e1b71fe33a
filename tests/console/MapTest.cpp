#include "console/boxes/MapBox.h"
#include "console/boxes/PictureBox.h"
#include "tests/console/SheetWorld.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

TEST(MapReference, HasAFileAndPerhapsAPlace) {
    const struct {
        const char* text;
        const char* path;
        const char* baseName;
        std::optional<MapPoint> place;
    } rows[] = {
        {"shop.bmp/10/20", "Maps\\shop.bmp", "shop.bmp", MapPoint{10, 20}},
        {" A\\shop.bmp / 10 / 20 ", "Maps\\A\\shop.bmp", "shop.bmp", MapPoint{10, 20}},
        {"D:\\m\\shop.bmp/1/2", "D:\\m\\shop.bmp", "shop.bmp", MapPoint{1, 2}},
        {"shop.bmp", "Maps\\shop.bmp", "shop.bmp", std::nullopt},
        {"shop.bmp/10", "Maps\\shop.bmp", "shop.bmp", std::nullopt},
        {"shop.bmp/x/20", "Maps\\shop.bmp", "shop.bmp", std::nullopt},
        {"shop.bmp/-1/20", "Maps\\shop.bmp", "shop.bmp", std::nullopt},
        {"shop.bmp/99999999999/20", "Maps\\shop.bmp", "shop.bmp", MapPoint{2147483647, 20}},
    };
    for (const auto& row : rows) {
        const MapReference map = ParseMapReference(row.text);
        EXPECT_EQ(map.Path(), row.path) << row.text;
        EXPECT_EQ(map.BaseName(), row.baseName) << row.text;
        EXPECT_EQ(map.place, row.place) << row.text;
    }
}

TEST(MapGeometry, MouseGivesThePlaceUnderTheCross) {
    for (const int zoom : {20, 60, 100, 140, 220, 400}) {
        for (const int x : {0, 5, 10, 315, 5000}) {
            const MapPoint scaled = ScaledPlace({x, x + 5}, zoom);
            const MapPoint back = PlaceUnder(scaled, zoom);
            EXPECT_LE(std::abs(back.x - x), zoom < 100 ? 2 : 0) << zoom << " " << x;
            EXPECT_LE(std::abs(back.y - x - 5), zoom < 100 ? 2 : 0) << zoom << " " << x;
        }
    }
    EXPECT_EQ(ScaledPlace({2147483647, 1}, 400).x, 1'000'000'000) << "a place from data never overflows";
}

TEST(MapGeometry, ZoomStaysOnItsSteps) {
    for (const auto& [wanted, got] :
         {std::pair{0, 20}, {-5, 20}, {20, 20}, {99, 100}, {109, 100}, {110, 120}, {999, 400}}) {
        EXPECT_EQ(LimitZoom(wanted), got) << wanted;
    }
}

TEST(MapGeometry, CenterIsClampedToThePicture) {
    const MapSize picture{1000, 800};
    const MapSize view{400, 300};
    EXPECT_EQ(ScrollToCenter({500, 400}, 100, picture, view), (MapPoint{300, 250}));
    EXPECT_EQ(ScrollToCenter({0, 0}, 100, picture, view), (MapPoint{0, 0}));
    EXPECT_EQ(ScrollToCenter({5000, 799}, 100, picture, view), (MapPoint{600, 500}));
    EXPECT_EQ(ScrollToCenter({500, 400}, 20, picture, view), (MapPoint{0, 0})) << "all of it is in sight";
}

struct MapWorld : ConsoleWorld {
    MapWorld() { Use(own); }
    void Use(MapPictures& pictures) {
        map = std::make_unique<MapBox>(MapBox::Needs{pictures, captions, time, *store, 110});
        map->SetView(view);
    }
    OwnMaps own{dataFiles};
    FetchedMaps fetched{dataFiles, folder.Tree()};
    RecordingView view{};
    std::unique_ptr<MapBox> map{};
};

TEST(MapBox, FlashesItsCrossUntilItIsClosed) {
    MapWorld w;
    w.folder.Write("Maps\\a.bmp", "picture");
    w.map->Open("a.bmp/10/20", 5, OpenedBy::Operator);
    EXPECT_EQ(w.map->Picture(), "picture");
    EXPECT_EQ(w.map->Title(), "a.bmp - Nordkeep");
    EXPECT_EQ(w.map->Zoom(), 120);
    EXPECT_FALSE(w.map->IsFlashWhite());
    w.time.Advance(500);
    EXPECT_TRUE(w.map->IsFlashWhite());
    w.time.Advance(500);
    EXPECT_FALSE(w.map->IsFlashWhite());
    w.map->AdjustZoom('-');
    w.map->AdjustZoom('x');
    w.map->MoveMouse({50, 100});
    EXPECT_EQ(w.map->StatusText(), "Zoom: 100 %   X: 50   Y: 100");
    w.map->Close();
    w.view.calls.clear();
    w.time.Advance(5000);
    EXPECT_EQ(w.view.calls, "");
}

TEST(MapBox, TellsWhoseMapItIsAndThatAnotherAlarmIsCurrent) {
    MapWorld w;
    w.folder.Write("Maps\\a.bmp", "picture");
    cAlarm& shown = w.Raise();
    shown.m_TranslatedTypeCode = "Fire";
    const cAlarm& other = w.Raise("2");
    w.map->Open("a.bmp/10/20", shown.m_FilePointer, OpenedBy::Operator);
    EXPECT_TRUE(w.map->StatusText().starts_with("Shop, Fire, 2024-03-05 06:00:00"));
    w.map->NoteCurrent(shown.m_FilePointer);
    EXPECT_EQ(w.map->OtherCurrent(), "");
    w.map->NoteCurrent(other.m_FilePointer);
    EXPECT_NE(w.map->OtherCurrent().find("Shop"), Text::npos);
    w.map->NoteCurrent(0);
    EXPECT_EQ(w.map->OtherCurrent(), "");
    w.map->Open("a.bmp", 0, OpenedBy::Operator);
    w.map->NoteCurrent(other.m_FilePointer);
    EXPECT_EQ(w.map->OtherCurrent(), "") << "a map that belongs to no alarm";
}

TEST(MapBox, TravelsToAClientOnce) {
    MapWorld w;
    w.Use(w.fetched);
    w.folder.Write("Maps\\a.bmp", "picture");
    w.folder.Write("Maps\\B\\a.bmp", "other");
    w.map->Open("a.bmp/1/2", 0, OpenedBy::Operator);
    w.map->Open("a.bmp/3/4", 0, OpenedBy::Operator);
    EXPECT_EQ(w.dataFiles.sent, "20 22 20 ");
    EXPECT_EQ(w.folder.Read("Settings\\Temp\\a.bmp"), "picture");
    w.map->Open("B\\a.bmp", 0, OpenedBy::Operator);
    EXPECT_EQ(w.map->Picture(), "other") << "another map of the same name";
    w.map->Open("..\\..\\a.bmp", 0, OpenedBy::Operator);
    EXPECT_TRUE(w.folder.Exists("Settings\\Temp\\a.bmp"));
    w.map->Open("missing.bmp/1/2", 0, OpenedBy::Operator);
    w.map->SetPictureSize({});
    EXPECT_EQ(w.map->Failure(), w.captions(3301, {"missing.bmp"}));
}

/// The pictures of so many ticks, the first at once.
Text Sequence(const char* list, int time, int ticks, bool isSpeech = false) {
    TempFolder folder;
    folder.Write("1", "one");
    folder.Write("P\\2", "two");
    ManualTime loop;
    PictureSettings settings;
    settings.AlarmPictures = isSpeech ? "1" : list;
    settings.SpeechPictures = isSpeech ? list : "1";
    settings.AlarmPictureTime = isSpeech ? 0 : time;
    settings.SpeechPictureTime = isSpeech ? time : 0;
    PictureBox picture(settings, folder.Tree(), loop);
    picture.Show(1, "caption", isSpeech);
    Text shown;
    for (int i = 0; i <= ticks; ++i) {
        shown += (picture.Picture().empty() ? "<" + picture.Failure() + ">" : picture.Picture()) + " ";
        loop.Advance(time);
    }
    return shown;
}

TEST(PictureBox, StepsThroughItsList) {
    EXPECT_EQ(Sequence("", 100, 2), "<> <> <> ");
    EXPECT_EQ(Sequence("1", 100, 2), "one one one ");
    EXPECT_EQ(Sequence(" 1 , P\\2", 100, 3), "one two one two ");
    EXPECT_EQ(Sequence("1,P\\2,", 100, 2), "one two one ");
    EXPECT_EQ(Sequence(",1", 100, 2), "<> <> <> ") << "an empty entry ends the list";
    EXPECT_EQ(Sequence("gone,1", 100, 1), "<Picture 'gone' not found...> one ");
    EXPECT_EQ(Sequence("1,P\\2", 0, 2), "one one one ") << "without a time the first one stays";
    EXPECT_EQ(Sequence("P\\2,1", 100, 1, true), "two one ");
}

TEST(PictureBox, GoesWithItsAlarm) {
    TempFolder folder;
    ManualTime loop;
    PictureSettings settings;
    settings.AlarmPictures = "1";
    settings.AlarmPictureTime = 10;
    PictureBox picture(settings, folder.Tree(), loop);
    RecordingView view;
    picture.SetView(view);
    picture.Show(1, "a", false);
    picture.Show(2, "b", false);
    picture.CloseFor(1);
    EXPECT_TRUE(picture.IsOpen());
    picture.CloseFor(2);
    EXPECT_FALSE(picture.IsOpen());
    view.calls.clear();
    loop.Advance(1000);
    EXPECT_EQ(view.calls, "");
}

}  // namespace
}  // namespace nordkeep
