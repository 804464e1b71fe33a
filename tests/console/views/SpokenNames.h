#pragma once

#include <QtGui/QAccessible>
#include <QtWidgets/QAbstractSpinBox>
#include <QtWidgets/QCalendarWidget>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QTabWidget>

#include <vector>

namespace nordkeep {

/// What a reader of the screen would say of a control: its own name, its text, or the label that belongs to
/// it.
inline QString NameOfControl(const QWidget& control) {
    QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(const_cast<QWidget*>(&control));
    return spoken ? spoken->text(QAccessible::Name) : QString();
}

/// The controls of a window that take the keys, without the parts that the toolkit makes inside of others.
inline std::vector<QWidget*> ControlsOf(QWidget& window) {
    std::vector<QWidget*> controls;
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        const auto* label = qobject_cast<QLabel*>(widget);
        const bool isPart = (label && label->text().isEmpty()) || qobject_cast<QTabWidget*>(widget) ||
                            widget->parentWidget()->inherits("QTabBar") || widget->isHidden() ||
                            widget->objectName().startsWith(QLatin1String("qt_")) ||
                            qobject_cast<QAbstractSpinBox*>(widget->parentWidget()) ||
                            qobject_cast<QComboBox*>(widget->parentWidget()) ||
                            qobject_cast<QCalendarWidget*>(widget->parentWidget()) ||
                            widget->inherits("QComboBoxPrivateContainer") ||
                            widget->inherits("QComboBoxListView") || widget->inherits("QScrollArea");
        if (widget->focusPolicy() != Qt::NoFocus && !isPart) controls.push_back(widget);
    }
    return controls;
}

}  // namespace nordkeep
