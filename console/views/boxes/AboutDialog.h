#pragma once

#include "console/boxes/AboutText.h"
#include "console/views/lists/ViewParts.h"

namespace nordkeep {

/// Tells which program this is.
class AboutDialog final : public QDialog {
 public:
    AboutDialog(const AboutText& about, const Captions& captions, QWidget* parent = nullptr);
};

}  // namespace nordkeep
