#pragma once

#include <QDateTime>
#include <QList>
#include <QString>
#include <QVariant>
#include <utility>

namespace Orvane {

// The arguments of a field object's save, in the order the field editor passes them.
struct FieldSaveRequest {
    qint32 fieldId = 0; // 0 for a new field
    QString name;
    qint32 entityId = 0;
    QString appGroup;
    QString kind;
    qint32 technologyMask = 0;
    QString dataTypeCode;
    qint32 reserved = -1;
    QString heading1;
    QString heading2;
    QString description;
    qint32 aggregationPairId = 0;
    qint32 ownerId = 0;
    QString note1;
    QDateTime savedAt;
    QString note2;
    QList<std::pair<QString, QString>> extraColumns; // in the dictionary's order
    qint32 option = 0;
    qint32 style = 0;
    qint32 styleColour = 0;
};

// What a failed save reports: code 2 with the flag set means the name is taken.
struct FieldSaveError {
    qint32 code = 0;
    bool flag = false;
    QString description;
};

// A dictionary field object of the host's field-information service.
class IField {
public:
    virtual ~IField() = default;

    virtual qint32 Field_Id() const = 0;
    virtual void setField_Id(qint32 id) = 0;
    virtual QString Field_Name() const = 0;
    virtual qint32 Entity_Id() const = 0;
    virtual QString Entity_Label() const = 0;

    virtual QString Description() const = 0;
    virtual QString Heading1() const = 0;
    virtual QString Heading2() const = 0;
    virtual QString TimeAggregator() const = 0;
    virtual QString ElementAggregator() const = 0;
    virtual qint32 AggregationPairId() const = 0;
    virtual QString DataType() const = 0;     // one-letter code
    virtual QString Technologies() const = 0; // text form of the technology selection
    virtual qint32 TechnologyMask() const = 0;
    virtual qint32 Style() const = 0;
    virtual qint32 StyleColour() const = 0;
    virtual QString ExtraColumnValue(const QString& column) const = 0;

    // Saves the field as the field editor describes it; on failure LastError() says why.
    virtual bool Save(const FieldSaveRequest& request, QVariant& result) = 0;
    virtual FieldSaveError LastError() const = 0;
};

} // namespace Orvane
