#include "orvane/exchange/DefinitionJson.h"

#include "orvane/model/DataTypes.h"
#include "orvane/model/FieldNameRule.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>
#include <cmath>

namespace Orvane {

namespace {

// The texts of this file, in one translation context.
struct Texts {
    Q_DECLARE_TR_FUNCTIONS(Orvane::DefinitionJson)
};

constexpr qint32 MaxPosition = 500;
const QString AsciiType = QStringLiteral("ASCII Data Source");
const QString OdbcType = QStringLiteral("ODBC Data Source");

bool isTypeWord(const QString& word) {
    return !word.isEmpty() && mOrvane::DataTypeList.split(QLatin1Char('\t')).contains(word);
}

QJsonObject fieldObject(const FieldReference& field) {
    QJsonObject object{{QStringLiteral("name"), field.name}};
    if (!field.definition)
        return object;
    const FieldDefinition& d = *field.definition;
    QJsonObject extra;
    for (auto it = d.extra.cbegin(); it != d.extra.cend(); ++it)
        extra.insert(it.key(), it.value());
    object.insert(QStringLiteral("description"), d.description);
    object.insert(QStringLiteral("heading1"), d.heading1);
    object.insert(QStringLiteral("heading2"), d.heading2);
    object.insert(QStringLiteral("dataType"), d.dataType);
    object.insert(QStringLiteral("timeAggregator"), d.timeAggregator);
    object.insert(QStringLiteral("elementAggregator"), d.elementAggregator);
    object.insert(QStringLiteral("technologies"), QJsonArray::fromStringList(d.technologies));
    object.insert(QStringLiteral("style"), d.style);
    object.insert(QStringLiteral("styleColour"), d.styleColour);
    object.insert(QStringLiteral("extra"), extra);
    return object;
}

QJsonObject columnObject(const ColumnDefinition& column) {
    QJsonObject object{{QStringLiteral("name"), column.name},
                       {QStringLiteral("type"), column.type},
                       {QStringLiteral("position"), column.position},
                       {QStringLiteral("timeStamp"), column.timeStamp}};
    if (column.field)
        object.insert(QStringLiteral("field"), fieldObject(*column.field));
    if (column.key) {
        object.insert(QStringLiteral("key"),
                      QJsonObject{{QStringLiteral("ordinal"), column.key->ordinal},
                                  {QStringLiteral("entity"), column.key->entity},
                                  {QStringLiteral("field"), column.key->field}});
    }
    return object;
}

QJsonObject settingsObject(const EdsDefinition& definition) {
    if (definition.IsOdbc()) {
        return {{QStringLiteral("server"), definition.server},
                {QStringLiteral("database"), definition.database},
                {QStringLiteral("table"), definition.table},
                {QStringLiteral("user"), definition.user}};
    }
    return {{QStringLiteral("fileName"), definition.fileName},
            {QStringLiteral("delimiter"), definition.delimiter}};
}

// Reads members of one object, noting what is missing or of the wrong kind under its path.
class ObjectReader {
public:
    ObjectReader(const QJsonObject& object, QString path, QList<ExchangeProblem>& problems)
        : m_object(object)
        , m_path(std::move(path))
        , m_problems(problems) {}

    bool Has(const QString& key) const { return m_object.contains(key); }
    QString PathOf(const QString& key) const {
        return m_path.isEmpty() ? key : m_path + QLatin1Char('.') + key;
    }
    void Problem(const QString& key, const QString& message) const {
        m_problems.append({PathOf(key), message});
    }

    QString Text(const QString& key, bool required = true) const {
        const QJsonValue value = m_object.value(key);
        if (value.isString())
            return value.toString();
        if (required || !value.isUndefined())
            Problem(key,
                    value.isUndefined() ? Texts::tr("is missing") : Texts::tr("must be a text"));
        return QString();
    }

    // A whole number from minimum to maximum.
    qint32 Number(const QString& key, qint32 minimum, qint32 maximum, bool required = true) const {
        const QJsonValue value = m_object.value(key);
        if (value.isUndefined()) {
            if (required)
                Problem(key, Texts::tr("is missing"));
            return 0;
        }
        // The range first: only a number within it may be converted.
        const double number = value.toDouble();
        if (!value.isDouble() || number < minimum || number > maximum ||
            number != std::floor(number)) {
            Problem(key,
                    Texts::tr("must be a whole number from %1 to %2").arg(minimum).arg(maximum));
            return 0;
        }
        return static_cast<qint32>(number);
    }

    bool Flag(const QString& key) const {
        const QJsonValue value = m_object.value(key);
        if (!value.isBool() && !value.isUndefined())
            Problem(key, Texts::tr("must be true or false"));
        return value.toBool();
    }

    std::optional<QJsonObject> Object(const QString& key, bool required = true) const {
        const QJsonValue value = m_object.value(key);
        if (value.isObject())
            return value.toObject();
        if (required || !value.isUndefined())
            Problem(key,
                    value.isUndefined() ? Texts::tr("is missing") : Texts::tr("must be an object"));
        return std::nullopt;
    }

    QJsonArray Array(const QString& key) const {
        const QJsonValue value = m_object.value(key);
        if (!value.isArray())
            Problem(key,
                    value.isUndefined() ? Texts::tr("is missing") : Texts::tr("must be an array"));
        return value.toArray();
    }

private:
    QJsonObject m_object;
    QString m_path;
    QList<ExchangeProblem>& m_problems;
};

QString elementPath(const QString& path, qsizetype index) {
    return QStringLiteral("%1[%2]").arg(path).arg(index);
}

QString typeWord(const ObjectReader& reader, const QString& key) {
    const QString word = reader.Text(key);
    if (!word.isEmpty() && !isTypeWord(word))
        reader.Problem(
            key, Texts::tr("\"%1\" is not one of Integer, Float, String, ENUM, Date").arg(word));
    return word;
}

QStringList technologiesOf(const ObjectReader& reader) {
    QStringList names;
    const QJsonArray array = reader.Array(QStringLiteral("technologies"));
    for (qsizetype i = 0; i < array.size(); ++i) {
        if (array.at(i).isString())
            names << array.at(i).toString();
        else
            reader.Problem(elementPath(QStringLiteral("technologies"), i),
                           Texts::tr("must be a text"));
    }
    if (names.isEmpty() && reader.Has(QStringLiteral("technologies")))
        reader.Problem(QStringLiteral("technologies"),
                       Texts::tr("must name at least one technology"));
    return names;
}

QMap<QString, QString> extraOf(const ObjectReader& reader) {
    QMap<QString, QString> extra;
    const auto object = reader.Object(QStringLiteral("extra"), false);
    if (!object)
        return extra;
    for (auto it = object->constBegin(); it != object->constEnd(); ++it) {
        if (it.value().isString())
            extra.insert(it.key(), it.value().toString());
        else
            reader.Problem(QStringLiteral("extra.") + it.key(), Texts::tr("must be a text"));
    }
    return extra;
}

FieldDefinition definitionOf(const ObjectReader& reader) {
    FieldDefinition d;
    d.description = reader.Text(QStringLiteral("description"), false);
    d.heading1 = reader.Text(QStringLiteral("heading1"), false);
    d.heading2 = reader.Text(QStringLiteral("heading2"), false);
    d.dataType = typeWord(reader, QStringLiteral("dataType"));
    d.timeAggregator = reader.Text(QStringLiteral("timeAggregator"));
    d.elementAggregator = reader.Text(QStringLiteral("elementAggregator"), false);
    d.technologies = technologiesOf(reader);
    d.style = reader.Number(QStringLiteral("style"), 0, INT32_MAX, false);
    d.styleColour = reader.Number(QStringLiteral("styleColour"), 0, INT32_MAX, false);
    d.extra = extraOf(reader);
    return d;
}

FieldReference fieldOf(const QJsonObject& object, const QString& path,
                       QList<ExchangeProblem>& problems) {
    const ObjectReader reader(object, path, problems);
    FieldReference field{reader.Text(QStringLiteral("name")), std::nullopt};
    if (!field.name.isEmpty() && !mOrvane::FollowsFieldNameRule(field.name.trimmed()))
        reader.Problem(QStringLiteral("name"),
                       Texts::tr("\"%1\" is no field name: it must begin with a letter or _ "
                                 "and go on with letters, digits, %% or _")
                           .arg(field.name));
    // The name alone refers to a field the dictionary has; anything more defines it.
    if (object.size() > 1)
        field.definition = definitionOf(reader);
    return field;
}

KeyReference keyOf(const QJsonObject& object, const QString& path,
                   QList<ExchangeProblem>& problems) {
    const ObjectReader reader(object, path, problems);
    return {reader.Number(QStringLiteral("ordinal"), 1, MaxPosition),
            reader.Text(QStringLiteral("entity")), reader.Text(QStringLiteral("field"))};
}

ColumnDefinition columnOf(const QJsonObject& object, const QString& path,
                          QList<ExchangeProblem>& problems) {
    const ObjectReader reader(object, path, problems);
    ColumnDefinition column;
    column.name = reader.Text(QStringLiteral("name")).trimmed();
    if (column.name.isEmpty() && reader.Has(QStringLiteral("name")))
        reader.Problem(QStringLiteral("name"), Texts::tr("must not be empty"));
    column.type = typeWord(reader, QStringLiteral("type"));
    column.position = reader.Number(QStringLiteral("position"), 1, MaxPosition);
    column.timeStamp = reader.Flag(QStringLiteral("timeStamp"));
    if (const auto field = reader.Object(QStringLiteral("field"), false))
        column.field = fieldOf(*field, reader.PathOf(QStringLiteral("field")), problems);
    if (const auto key = reader.Object(QStringLiteral("key"), false))
        column.key = keyOf(*key, reader.PathOf(QStringLiteral("key")), problems);
    return column;
}

// Names are keys of the column collection (trimmed, any case); positions and key ordinals are
// places in the record and in the key.
void checkUnique(const QList<ColumnDefinition>& columns, QList<ExchangeProblem>& problems) {
    QSet<QString> names;
    QSet<qint32> positions;
    QSet<qint32> ordinals;
    qint32 timeStamps = 0;
    for (qsizetype i = 0; i < columns.size(); ++i) {
        const ColumnDefinition& column = columns.at(i);
        const QString path = elementPath(QStringLiteral("columns"), i);
        if (!column.name.isEmpty() && names.contains(column.name.toLower()))
            problems.append({path + QStringLiteral(".name"),
                             Texts::tr("another column is named \"%1\"").arg(column.name)});
        if (column.position > 0 && positions.contains(column.position))
            problems.append({path + QStringLiteral(".position"),
                             Texts::tr("another column is at position %1").arg(column.position)});
        if (column.key && column.key->ordinal > 0 && ordinals.contains(column.key->ordinal))
            problems.append({path + QStringLiteral(".key.ordinal"),
                             Texts::tr("another key has ordinal %1").arg(column.key->ordinal)});
        if (column.timeStamp && ++timeStamps > 1)
            problems.append({path + QStringLiteral(".timeStamp"),
                             Texts::tr("another column is the time stamp")});
        names.insert(column.name.toLower());
        positions.insert(column.position);
        if (column.key)
            ordinals.insert(column.key->ordinal);
    }
}

void readSettings(const QJsonObject& settings, EdsDefinition& definition,
                  QList<ExchangeProblem>& problems) {
    const ObjectReader reader(settings, QStringLiteral("settings"), problems);
    if (reader.Has(QStringLiteral("password")))
        reader.Problem(QStringLiteral("password"),
                       Texts::tr("a password is never kept in a definition file"));
    if (definition.IsOdbc()) {
        definition.server = reader.Text(QStringLiteral("server"));
        definition.database = reader.Text(QStringLiteral("database"), false);
        definition.table = reader.Text(QStringLiteral("table"));
        definition.user = reader.Text(QStringLiteral("user"), false);
        return;
    }
    definition.fileName = reader.Text(QStringLiteral("fileName"));
    definition.delimiter = reader.Text(QStringLiteral("delimiter"));
}

void readColumns(const QJsonArray& array, EdsDefinition& definition,
                 QList<ExchangeProblem>& problems) {
    for (qsizetype i = 0; i < array.size(); ++i) {
        const QString path = elementPath(QStringLiteral("columns"), i);
        if (array.at(i).isObject())
            definition.columns.append(columnOf(array.at(i).toObject(), path, problems));
        else
            problems.append({path, Texts::tr("must be an object")});
    }
    checkUnique(definition.columns, problems);
}

void readTop(const QJsonObject& top, EdsDefinition& definition, QList<ExchangeProblem>& problems) {
    const ObjectReader reader(top, QString(), problems);
    definition.name = reader.Text(QStringLiteral("name")).trimmed();
    if (definition.name.isEmpty() && reader.Has(QStringLiteral("name")))
        reader.Problem(QStringLiteral("name"), Texts::tr("must not be empty"));
    definition.type = reader.Text(QStringLiteral("type"));
    if (!definition.type.isEmpty() && definition.type != AsciiType && definition.type != OdbcType)
        reader.Problem(QStringLiteral("type"),
                       Texts::tr("must be \"%1\" or \"%2\"").arg(AsciiType, OdbcType));
    definition.description = reader.Text(QStringLiteral("description"), false);
    definition.entity = reader.Text(QStringLiteral("entity"));
    definition.timeSeries = reader.Flag(QStringLiteral("timeSeries"));
    if (definition.timeSeries)
        definition.frequency = reader.Text(QStringLiteral("frequency"));
    if (const auto settings = reader.Object(QStringLiteral("settings")))
        readSettings(*settings, definition, problems);
    readColumns(reader.Array(QStringLiteral("columns")), definition, problems);
}

} // namespace

QByteArray DefinitionJson::Write(const EdsDefinition& definition) {
    QJsonArray columns;
    for (const ColumnDefinition& column : definition.columns)
        columns.append(columnObject(column));
    QJsonObject top{{QStringLiteral("format"), Format},
                    {QStringLiteral("name"), definition.name},
                    {QStringLiteral("type"), definition.type},
                    {QStringLiteral("description"), definition.description},
                    {QStringLiteral("entity"), definition.entity},
                    {QStringLiteral("timeSeries"), definition.timeSeries},
                    {QStringLiteral("settings"), settingsObject(definition)},
                    {QStringLiteral("columns"), columns}};
    if (definition.timeSeries)
        top.insert(QStringLiteral("frequency"), definition.frequency);
    return QJsonDocument(top).toJson(QJsonDocument::Indented);
}

DefinitionJson::ReadResult DefinitionJson::Read(const QByteArray& text) {
    ReadResult result;
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(text, &error);
    if (error.error != QJsonParseError::NoError) {
        result.problems.append(
            {QString(),
             Texts::tr("not JSON: %1 at offset %2").arg(error.errorString()).arg(error.offset)});
        return result;
    }
    if (!document.isObject()) {
        result.problems.append({QString(), Texts::tr("not a data source: the file must hold "
                                                     "one JSON object")});
        return result;
    }
    const QJsonObject top = document.object();
    // Another format or version is refused before anything else is read.
    const QJsonValue format = top.value(QStringLiteral("format"));
    if (format != QJsonValue(Format)) {
        result.problems.append(
            {QStringLiteral("format"), format.isUndefined()
                                           ? Texts::tr("is missing; expected \"%1\"").arg(Format)
                                           : Texts::tr("\"%1\" is not supported; expected \"%2\"")
                                                 .arg(format.toVariant().toString(), Format)});
        return result;
    }
    EdsDefinition definition;
    readTop(top, definition, result.problems);
    if (result.problems.isEmpty())
        result.definition = std::move(definition);
    return result;
}

} // namespace Orvane
