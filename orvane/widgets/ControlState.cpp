#include "orvane/widgets/ControlState.h"

#include <QAction>
#include <QFrame>
#include <QGroupBox>
#include <QLabel>
#include <QMenu>

namespace Orvane::mOrvane {

namespace {

// A plain container holds controls but is not one itself.
bool isContainer(const QWidget* widget) {
    const QMetaObject* meta = widget->metaObject();
    return meta == &QWidget::staticMetaObject || meta == &QFrame::staticMetaObject;
}

void enableActions(QWidget* widget, bool enabled) {
    for (QAction* action : widget->actions()) {
        if (!action->isSeparator())
            action->setEnabled(enabled);
    }
}

} // namespace

void SetControlsEnabled(QWidget* owner, bool enabled) {
    for (QWidget* child : owner->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        if (child->isWindow() && !qobject_cast<QMenu*>(child))
            continue;
        if (qobject_cast<QLabel*>(child) || qobject_cast<QGroupBox*>(child)) {
            child->setEnabled(true);
            SetControlsEnabled(child, enabled);
        } else if (isContainer(child)) {
            SetControlsEnabled(child, enabled);
        } else if (qobject_cast<QMenu*>(child)) {
            enableActions(child, enabled);
        } else {
            child->setEnabled(enabled);
        }
    }
}

} // namespace Orvane::mOrvane
