#pragma once

#include "studio/dictionary/FieldValues.h"

#include <QList>
#include <QString>
#include <functional>

namespace Orvane {
class IQueryService;
struct FieldSaveRequest;
} // namespace Orvane

namespace Orvane::Studio {

// An extra column as the dictionary defines it for an application group.
struct ExtraColumnRow {
    qint32 id = 0;
    QString name;
    bool inUse = false;
};

// Reads and writes the dictionary's fields through the query service: what the field objects'
// saves and the dictionary's field registration share. Every failure is an Orvane::Error.
class FieldStore {
public:
    explicit FieldStore(IQueryService& query)
        : m_query(query) {}

    // The fields a DictionarySql field statement selects, one entry per field in row order.
    QList<FieldValues> Read(const QString& statement);

    // The values a save request gives a field that now holds current; refuses what the
    // dictionary does not know (see DictionaryField).
    FieldValues Prepare(const FieldSaveRequest& request, const FieldValues& current);
    bool NameTaken(qint32 entityId, const QString& name, qint32 exceptId);
    // Writes a stored field's definition, names, technologies and extra values, all or nothing.
    void WriteStored(const FieldValues& values);
    // What eds_client.createfield does not take: style colour, owner, time of save, extra values.
    void WriteRegistered(const FieldValues& values);

    QList<Technology> Technologies();
    QList<ExtraColumnRow> ExtraColumns(const QString& appGroup);
    // The technology names of a mask in bit order, joined by ", ".
    static QString TechnologyText(const QList<Technology>& technologies, qint32 mask);

private:
    QString entityLabel(qint32 entityId);
    void resolveAggregators(FieldValues& values);
    void resolveTechnologies(FieldValues& values);
    void takeExtraValues(const FieldSaveRequest& request, FieldValues& values);
    void writeExtras(const FieldValues& values);
    // Runs the work in one transaction unless the host already has one open.
    void inOneTransaction(const std::function<void()>& work);

    IQueryService& m_query;
};

} // namespace Orvane::Studio
