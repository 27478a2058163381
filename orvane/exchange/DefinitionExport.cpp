#include "orvane/exchange/DefinitionExport.h"

#include "orvane/host/HostRegistry.h"
#include "orvane/host/IDocumentType.h"
#include "orvane/host/IEntity.h"
#include "orvane/host/IField.h"
#include "orvane/host/IFieldInfoService.h"
#include "orvane/model/CDataSourcesColumn.h"
#include "orvane/model/CDataSourcesColumns.h"
#include "orvane/model/CDataSourcesData.h"
#include "orvane/model/DataTypes.h"
#include "orvane/model/FrequencyList.h"

namespace Orvane {

namespace {

const QString AppGroup = QStringLiteral("Traffic");

QMap<QString, QString> extraValuesOf(const IField& field) {
    QMap<QString, QString> extra;
    for (const ExtraColumn& column : HostRegistry::FieldInfo().ExtraColumns(AppGroup)) {
        const QString value = field.ExtraColumnValue(column.name);
        if (column.inUse && !value.isEmpty())
            extra.insert(column.name, value);
    }
    return extra;
}

FieldReference fieldOf(const IField& field) {
    FieldDefinition d;
    d.description = field.Description();
    d.heading1 = field.Heading1();
    d.heading2 = field.Heading2();
    d.dataType = mOrvane::DataTypeNameFromCode(field.DataType());
    d.timeAggregator = field.TimeAggregator();
    d.elementAggregator = field.ElementAggregator();
    d.technologies = field.Technologies().split(QStringLiteral(", "), Qt::SkipEmptyParts);
    d.style = field.Style();
    d.styleColour = field.StyleColour();
    d.extra = extraValuesOf(field);
    return {field.Field_Name(), d};
}

ColumnDefinition columnOf(const CDataSourcesColumn& column) {
    ColumnDefinition c;
    c.name = column.Column_Name();
    // A loaded column holds its stored code, an edited one the word the grid shows.
    c.type = mOrvane::DataTypeNameFromCode(column.Column_Type().left(1));
    c.position = column.Position();
    c.timeStamp = column.IsTimeStamp();
    if (column.Field())
        c.field = fieldOf(*column.Field());
    if (column.Is_Key())
        c.key = KeyReference{column.Key_Ordinal(), column.KeyEntity(), column.KeyFld_Name()};
    return c;
}

} // namespace

EdsDefinition DefinitionExport::FromDocument(const CDataSourcesData& document) {
    EdsDefinition d;
    d.name = document.DocName();
    d.type = document.DocumentType() ? document.DocumentType()->TypeName() : QString();
    d.description = document.DocDescription();
    d.entity = document.Entity() ? document.Entity()->Entity_Name() : QString();
    d.timeSeries = document.IsTimeSeries();
    if (d.timeSeries)
        d.frequency = FrequencyList::DescriptionOf(document.FreqId());
    if (d.IsOdbc()) {
        d.server = document.Server();
        d.database = document.Schema();
        d.table = document.Table();
        d.user = document.UserId();
    } else {
        d.fileName = document.FileName();
        d.delimiter = document.Delimeter();
    }
    for (const auto& column : *document.Columns()) {
        if (!column->ColumnDeleted())
            d.columns.append(columnOf(*column));
    }
    return d;
}

} // namespace Orvane
