#include "orvane/model/CDataSourcesColumn.h"

#include "orvane/host/IField.h"

namespace Orvane {

qint32 CDataSourcesColumn::Field_Id() const {
    return m_field ? m_field->Field_Id() : 0;
}

QString CDataSourcesColumn::Field_Name() const {
    return m_field ? m_field->Field_Name() : QString();
}

void CDataSourcesColumn::setFieldAdded(bool value) {
    m_fieldAdded = value;
    if (value) {
        m_fieldDirty = false;
        m_fieldMapped = false;
        m_dirty = true;
    }
}

void CDataSourcesColumn::setFieldMapped(bool value) {
    m_fieldMapped = value;
    if (value)
        m_dirty = true;
}

void CDataSourcesColumn::setFieldDirty(bool value) {
    m_fieldDirty = value;
    if (value) {
        m_dirty = true;
        m_fieldAdded = false;
        m_fieldDeleted = false;
    }
}

void CDataSourcesColumn::setFieldDeleted(bool value) {
    m_fieldDeleted = value;
    if (value) {
        m_dirty = true;
        m_fieldAdded = false;
        m_fieldDirty = false;
        m_fieldMapped = false;
    }
}

void CDataSourcesColumn::setColumnDeleted(bool value) {
    m_columnDeleted = value;
    if (value)
        m_dirty = false;
}

void CDataSourcesColumn::setDirty(bool value) {
    m_dirty = value;
    if (value)
        m_columnDeleted = false;
}

void CDataSourcesColumn::setKeyDeleted(bool value) {
    m_keyDeleted = value;
    if (value) {
        m_dirty = true;
        m_keyDirty = false;
        m_keyAdded = false;
    }
}

void CDataSourcesColumn::setKeyDirty(bool value) {
    m_keyDirty = value;
    if (value) {
        m_dirty = true;
        m_keyDeleted = false;
        m_keyAdded = false;
    }
}

void CDataSourcesColumn::setKeyAdded(bool value) {
    m_keyAdded = value;
    if (value) {
        m_dirty = true;
        m_keyDirty = false;
        m_keyDeleted = false;
    }
}

std::shared_ptr<CDataSourcesColumn> CDataSourcesColumn::Clone() const {
    auto copy = std::make_shared<CDataSourcesColumn>();
    copy->setColumn_Id(m_columnId);
    copy->setColumn_Name(m_columnName);
    copy->setColumn_Type(m_columnType);
    copy->setColumnDeleted(m_columnDeleted);
    copy->setDirty(m_dirty);
    copy->setField(m_field);
    copy->setFieldDeleted(m_fieldDeleted);
    copy->setFieldAdded(m_fieldAdded);
    copy->setFieldDirty(m_fieldDirty);
    copy->setFieldMapped(m_fieldMapped);
    copy->setKey_Ordinal(m_keyOrdinal);
    copy->setKeyAdded(m_keyAdded);
    copy->setKeyDeleted(m_keyDeleted);
    copy->setKeyDirty(m_keyDirty);
    copy->setKeyEntity(m_keyEntity);
    copy->setKeyEntity_Label(m_keyEntityLabel);
    copy->setKeyEntity_Id(m_keyEntityId);
    copy->setKeyFld_Id(m_keyFldId);
    copy->setKeyFld_Name(m_keyFldName);
    copy->setPK_Id(m_pkId);
    copy->setPosition(m_position);
    copy->setIsTimeStamp(m_isTimeStamp);
    return copy;
}

void CDataSourcesColumn::CopyForRename(const CDataSourcesColumn& from, bool newDocument) {
    setColumn_Id(from.m_columnId);
    setColumn_Type(from.m_columnType);
    setColumnDeleted(from.m_columnDeleted);
    setDirty(newDocument ? from.m_dirty : true);
    setField(from.m_field);
    // Before FieldAdded, which it would otherwise clear.
    setFieldDeleted(from.m_fieldDeleted);
    setFieldAdded(from.m_fieldAdded);
    setFieldDirty(from.m_fieldDirty);
    setFieldMapped(from.m_fieldMapped);
    setKey_Ordinal(from.m_keyOrdinal);
    setKeyAdded(from.m_keyAdded);
    setKeyDeleted(from.m_keyDeleted);
    setKeyDirty(from.m_keyDirty);
    setKeyEntity(from.m_keyEntity);
    setKeyEntity_Label(from.m_keyEntityLabel);
    setKeyEntity_Id(from.m_keyEntityId);
    setKeyFld_Id(from.m_keyFldId);
    setKeyFld_Name(from.m_keyFldName);
    setPK_Id(from.m_pkId);
    setPosition(from.m_position);
    setColPosition(from.m_colPosition);
    setIsTimeStamp(from.m_isTimeStamp);
}

void CDataSourcesColumn::MarkKeyEdited() {
    if (m_columnId <= 0)
        setKeyDeleted(false);
    else if (m_pkId > 0)
        setKeyDirty(true);
    else
        setKeyAdded(true);
}

void CDataSourcesColumn::WipeKey() {
    setKey_Ordinal(0);
    setKeyAdded(false);
    setKeyEntity(QString());
    setKeyEntity_Id(0);
    setKeyEntity_Label(QString());
    setKeyFld_Id(0);
    setKeyFld_Name(QString());
    setPK_Id(0);
}

} // namespace Orvane
