#include "orvane/editors/mOrvane.h"

#include "orvane/model/FrequencyList.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QFrame>
#include <QGroupBox>
#include <QLabel>
#include <QMenu>
#include <QStringList>

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

bool FileNameHasBadChar(const QString& text) {
    for (const QChar c : text) {
        if (InvalidFileChars.contains(c))
            return true;
    }
    return false;
}

bool IsValidFileName(const QString& text) {
    for (const QChar c : InvalidFileChars) {
        if (text.contains(c))
            return false;
    }
    return true;
}

int FilterFileNameKey(int keyAscii) {
    if (keyAscii == EnterKey)
        return 0;
    if (keyAscii > 0 && keyAscii <= 0xFFFF && InvalidFileChars.contains(QChar(keyAscii)))
        return 0;
    return keyAscii;
}

QString DataTypeNameFromCode(const QString& code) {
    const QString wanted = code.trimmed();
    for (const QString& name : DataTypeList.split(QLatin1Char('\t'))) {
        if (name.left(1) == wanted)
            return name;
    }
    return QString();
}

QString DataTypeCode(const QString& typeName) {
    return typeName.left(1);
}

void FillFrequencyList(QComboBox& cboFrequency) {
    for (const FrequencyItem& item : FrequencyList::Items())
        cboFrequency.addItem(item.Description);
}

void ApplyFrequencyRule(const QCheckBox& ckTimeSeries, QComboBox& cboFrequency) {
    cboFrequency.setEnabled(ckTimeSeries.isChecked());
}

} // namespace Orvane::mOrvane
