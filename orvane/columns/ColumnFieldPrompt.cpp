#include "orvane/columns/ColumnFieldPrompt.h"

#include "orvane/dialogs/fFieldInfo.h"
#include "orvane/dialogs/frmKeySelector.h"
#include "orvane/host/HostRegistry.h"
#include "orvane/host/IApplication.h"
#include "orvane/host/IField.h"
#include "orvane/model/CDataSourcesColumn.h"
#include "orvane/model/CDataSourcesColumns.h"
#include "orvane/model/DataTypes.h"

#include <QCoreApplication>

namespace Orvane::ColumnFieldPrompt {

namespace {

QString tr(const char* text) {
    return QCoreApplication::translate("Orvane::ColumnFieldPrompt", text);
}

// The field editor speaks of types by their names.
QString typeName(const CDataSourcesColumn& column) {
    const QString name = mOrvane::DataTypeNameFromCode(column.Column_Type());
    return name.isEmpty() ? column.Column_Type() : name;
}

bool refuseDuplicateFieldName(const CDataSourcesColumns& layout, const CDataSourcesColumn& column,
                              const IField& field) {
    if (!layout.FieldNameUsedElsewhere(column, field.Field_Name()))
        return false;
    HostRegistry::App().MsgBox(
        tr("Field name is in use.") + MsgBoxLineBreak + tr("Please select a different name."),
        MsgBoxButtons::OKOnly, MsgBoxIcon::Critical, tr("CANNOT USE DUPLICATE FIELD NAMES"));
    return true;
}

} // namespace

bool AddField(QWidget* parent, const CDataSourcesColumns& layout, CDataSourcesColumn& column) {
    std::shared_ptr<IField> field;
    do {
        fFieldInfo dialog(parent);
        dialog.InitializeForNew(layout.Entity(), typeName(column), nullptr);
        HostRegistry::App().ShowModal(dialog);
        if (!dialog.Ok())
            return false;
        field = dialog.Field();
    } while (refuseDuplicateFieldName(layout, column, *field));

    column.setField(field);
    if (column.Column_Id() > 0)
        column.setFieldAdded(true);
    return true;
}

bool EditField(QWidget* parent, const CDataSourcesColumns& layout, CDataSourcesColumn& column) {
    fFieldInfo dialog(parent);
    dialog.InitializeForNew(layout.Entity(), typeName(column), column.Field());
    HostRegistry::App().ShowModal(dialog);
    if (!dialog.Ok() || !dialog.Modified())
        return false;
    // A field added during this edit is still to be created, so it is not marked for an update.
    if (!column.FieldAdded())
        column.setFieldDirty(true);
    return true;
}

bool ChooseKey(QWidget* parent, CDataSourcesColumns& layout, CDataSourcesColumn& column,
               bool editing) {
    frmKeySelector selector(parent);
    selector.setColumns(&layout);
    if (editing)
        selector.Initialize(column.Key_Ordinal(), column.KeyFld_Id());
    else
        selector.setOrdinal(layout.BiggestOrdinal() + 1);
    HostRegistry::App().ShowModal(selector);
    if (selector.Cancel())
        return false;
    column.setKey_Ordinal(selector.Ordinal());
    column.setKeyEntity_Id(selector.EntityID());
    column.setKeyFld_Id(selector.FieldId());
    column.setKeyFld_Name(selector.FieldName());
    // The selector's name carries the entity's label; a stored entity name no longer applies,
    // so the Key Field cell shows the name alone until the document is loaded again.
    column.setKeyEntity(QString());
    column.setKeyEntity_Label(QString());
    return true;
}

} // namespace Orvane::ColumnFieldPrompt
