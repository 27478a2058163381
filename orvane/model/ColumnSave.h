#pragma once

#include <QString>
#include <memory>

namespace Orvane {

class CDataSourcesColumns;
class IField;

// Writes a document's columns, key fields and dictionary fields, and the checks the editors make
// before a column or a field goes. No transaction is opened here: the host wraps the save.
namespace ColumnSave {

// The new-document path, in this order.
void InsertNewColumns(qint32 docId, CDataSourcesColumns& columns);
void CreateNewFields(qint32 docId, CDataSourcesColumns& columns);
void InsertNewKeys(qint32 docId, CDataSourcesColumns& columns);

// The edit path: deletions, clearing positions, updates, new columns.
void SaveColumns(CDataSourcesColumns& columns);

void UpdateField(const IField& field);
// Creates the dictionary field through eds_client.createfield, stores the new id into the field
// and registers it with the host's dictionary.
void CreateField(const std::shared_ptr<IField>& field, qint32 edsId, qint32 columnId,
                 qint32 entityId);

// The id of the entity's field of that name, or 0 when it has none.
qint32 FieldIdNamed(qint32 entityId, const QString& name);

// True when a report template uses the field of a column that is about to go.
bool FieldInTemplates(qint32 fieldId);
// True when another field of the entity already has the name, regardless of case and blanks.
bool FieldNameInUse(const QString& name, qint32 entityId, qint32 fieldId);

} // namespace ColumnSave

} // namespace Orvane
