#include "console/boxes/MapGeometry.h"
#include "console/views/editors/PlaceDialog.h"
#include "console/views/editors/RowEditors.h"
#include "platform/qt/QtText.h"

#include <QtCore/QPointer>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QLineEdit>

namespace nordkeep {
namespace {

constexpr int kCaptionPlace = 4823;

/// The name of a map, and the way to its picture.
class MapPlaceEditor final : public FieldEditor {
 public:
    explicit MapPlaceEditor(const EditorNeeds& needs)
        : needs_(needs), name_(NewPickEditor(needs)), place_(NewButton(needs.captions, kCaptionPlace)) {
        auto* layout = new QHBoxLayout(this);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(name_, 1);
        layout->addWidget(place_);
        name_->onEdit = [this](const Text& text) { Edit(text); };
        connect(place_, &QPushButton::clicked, this, [this] { AskPlace(); });
    }
    void ShowValue(const Text& value) override {
        value_ = value;
        name_->ShowValue(value);
        place_->setEnabled(!ParseMapReference(value).file.empty());
    }
    QWidget* Input() override { return name_->Input(); }

 private:
    void Edit(const Text& text) {
        ShowValue(text);
        onEdit(text);
    }
    void AskPlace() {
        const MapReference reference = ParseMapReference(value_);
        auto* dialog =
            new PlaceDialog(needs_.form.PictureOf(value_), reference.place, needs_.captions, window());
        // Modal, so that it is still the same row when the place is taken.
        dialog->onTake = [editor = QPointer(this), file = reference.file](MapPoint place) {
            if (editor) editor->Edit(ReferenceText(file, place));
        };
        dialog->open();
    }

    EditorNeeds needs_;
    FieldEditor* name_;
    QPushButton* place_;
    Text value_{};
};

}  // namespace

FieldEditor* NewMapPlaceEditor(const EditorNeeds& needs) {
    return new MapPlaceEditor(needs);
}

}  // namespace nordkeep
