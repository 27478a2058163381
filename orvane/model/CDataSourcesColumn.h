#pragma once

#include <QString>
#include <memory>

namespace Orvane {

class IField;

// One column of a data source: its place in the incoming record, the dictionary field it fills,
// the key field it fills with its ordinal, and the change flags that the save reads.
// The flag setters keep the flags consistent; their side effects write the other flags directly
// and do not cascade into those flags' own rules.
class CDataSourcesColumn {
public:
    qint32 Column_Id() const { return m_columnId; }
    void setColumn_Id(qint32 value) { m_columnId = value; }
    const QString& Column_Name() const { return m_columnName; }
    void setColumn_Name(const QString& value) { m_columnName = value; }
    const QString& Column_Type() const { return m_columnType; }
    void setColumn_Type(const QString& value) { m_columnType = value; }
    qint32 Position() const { return m_position; }
    void setPosition(qint32 value) { m_position = value; }

    const std::shared_ptr<IField>& Field() const { return m_field; }
    void setField(std::shared_ptr<IField> value) { m_field = std::move(value); }
    qint32 Field_Id() const;
    QString Field_Name() const;

    qint32 PK_Id() const { return m_pkId; }
    void setPK_Id(qint32 value) { m_pkId = value; }
    qint32 KeyFld_Id() const { return m_keyFldId; }
    void setKeyFld_Id(qint32 value) { m_keyFldId = value; }
    qint32 Key_Ordinal() const { return m_keyOrdinal; }
    void setKey_Ordinal(qint32 value) { m_keyOrdinal = value; }
    qint32 KeyEntity_Id() const { return m_keyEntityId; }
    void setKeyEntity_Id(qint32 value) { m_keyEntityId = value; }
    const QString& KeyFld_Name() const { return m_keyFldName; }
    void setKeyFld_Name(const QString& value) { m_keyFldName = value; }
    const QString& KeyEntity() const { return m_keyEntity; }
    void setKeyEntity(const QString& value) { m_keyEntity = value; }
    const QString& KeyEntity_Label() const { return m_keyEntityLabel; }
    void setKeyEntity_Label(const QString& value) { m_keyEntityLabel = value; }
    bool Is_Key() const { return m_keyFldId > 0; }
    // A key column whose key has not been deleted.
    bool IsLiveKey() const { return Is_Key() && !m_keyDeleted; }

    bool FieldAdded() const { return m_fieldAdded; }
    void setFieldAdded(bool value);
    bool FieldDirty() const { return m_fieldDirty; }
    void setFieldDirty(bool value);
    // The column's field is one the dictionary already has (proposed by Detect Columns for a
    // column of the same name): the save maps it to the column rather than creating it. Setting it
    // True sets Dirty True; a field added or deleted later clears it.
    bool FieldMapped() const { return m_fieldMapped; }
    void setFieldMapped(bool value);
    // The column's stored field was taken off it: the save removes the column's mapping row.
    // Setting it True sets Dirty True and FieldAdded, FieldDirty False. A later FieldAdded leaves
    // it set (one edit may replace the stored field by a new one); a later FieldDirty clears it,
    // since an update is of the field that stays mapped.
    bool FieldDeleted() const { return m_fieldDeleted; }
    void setFieldDeleted(bool value);
    bool ColumnDeleted() const { return m_columnDeleted; }
    void setColumnDeleted(bool value);
    bool Dirty() const { return m_dirty; }
    void setDirty(bool value);
    bool KeyDeleted() const { return m_keyDeleted; }
    void setKeyDeleted(bool value);
    bool KeyDirty() const { return m_keyDirty; }
    void setKeyDirty(bool value);
    bool KeyAdded() const { return m_keyAdded; }
    void setKeyAdded(bool value);

    qint32 ColPosition() const { return m_colPosition; }
    void setColPosition(qint32 value) { m_colPosition = value; }
    bool IsTimeStamp() const { return m_isTimeStamp; }
    void setIsTimeStamp(bool value) { m_isTimeStamp = value; }

    // A copy made through the setters, so its flags follow from their order; the editor
    // position is not copied. FieldDeleted is copied before FieldAdded, whose flag it would
    // otherwise clear.
    std::shared_ptr<CDataSourcesColumn> Clone() const;

    // Takes over everything but the name from the column this one replaces under a new name.
    // Dirty is copied in a new document; a stored document must write the new name.
    void CopyForRename(const CDataSourcesColumn& from, bool newDocument);
    // The key was chosen again. The save updates a key row only when one is stored (PK_Id > 0);
    // a key given to a stored column during this edit is still to be inserted. Either way the
    // key is live again, also on a column whose row is still to be inserted.
    void MarkKeyEdited();
    // Forgets the key altogether: in a new document there is no stored key row to delete.
    void WipeKey();

private:
    qint32 m_columnId = 0;
    QString m_columnName;
    QString m_columnType;
    qint32 m_position = 0;
    std::shared_ptr<IField> m_field;
    bool m_fieldAdded = false;
    qint32 m_pkId = 0;
    qint32 m_keyFldId = 0;
    qint32 m_keyOrdinal = 0;
    qint32 m_keyEntityId = 0;
    QString m_keyFldName;
    QString m_keyEntity;
    QString m_keyEntityLabel;
    bool m_fieldDirty = false;
    bool m_fieldMapped = false;
    bool m_fieldDeleted = false;
    bool m_columnDeleted = false;
    bool m_dirty = false;
    bool m_keyDeleted = false;
    bool m_keyDirty = false;
    bool m_keyAdded = false;
    qint32 m_colPosition = 0;
    bool m_isTimeStamp = false;
};

} // namespace Orvane
