#pragma once

#include "orvane/exchange/EdsDefinition.h"

#include <memory>

namespace Orvane {

class CDataSourcesColumn;
class CDataSourcesData;
class IField;

// Turns a definition read from a file into a new document of this database: the entity, the
// frequency, the key fields and the columns' fields are looked up by name in the dictionary. A
// field the dictionary lacks is made as the field editor makes one (same checks, the field
// object's save), and created in the dictionary when the document is saved.
//
//     DefinitionImport import(definition);
//     if (import.Resolve()) { host writes the document row under docId; import.Save(docId); }
//
// Resolve writes nothing. Save writes the columns, fields and keys (SaveData of the new
// document, then the columns that reuse a field); the host wraps the row and Save in one
// transaction.
class DefinitionImport {
public:
    explicit DefinitionImport(EdsDefinition definition);
    ~DefinitionImport();

    // False when the definition names what the dictionary lacks; Problems() then says what.
    bool Resolve();
    const QList<ExchangeProblem>& Problems() const { return m_problems; }
    // The new document, filled by Resolve; the host takes its row from it.
    const std::shared_ptr<CDataSourcesData>& Document() const { return m_document; }
    void Save(qint32 docId);

private:
    void resolveEntity();
    void resolveFrequency();
    void resolveColumn(const ColumnDefinition& definition, qsizetype index);
    void resolveKey(const KeyReference& key, CDataSourcesColumn& column, const QString& path);
    void resolveField(const FieldReference& field,
                      const std::shared_ptr<CDataSourcesColumn>& column, const QString& path);
    std::shared_ptr<IField> newField(const FieldReference& field, const QString& path);
    bool checkNewField(const FieldReference& field, const QString& path);
    void checkLength(const QString& text, qint32 maximum, const QString& path);
    qint32 technologyMask(const FieldDefinition& definition, const QString& path);
    void problem(const QString& path, const QString& message);

    EdsDefinition m_definition;
    std::shared_ptr<CDataSourcesData> m_document;
    QList<ExchangeProblem> m_problems;
    QStringList m_newFieldNames;
};

} // namespace Orvane
