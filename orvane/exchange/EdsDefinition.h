#pragma once

#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>
#include <optional>

namespace Orvane {

// What a file needs to create a column's dictionary field in another database.
struct FieldDefinition {
    QString description;
    QString heading1;
    QString heading2;
    QString dataType; // a type word: Integer, Float, String, ENUM or Date
    QString timeAggregator;
    QString elementAggregator;
    QStringList technologies; // names, in the dictionary's bit order
    qint32 style = 0;
    qint32 styleColour = 0;
    QMap<QString, QString> extra; // extra-column name to value, empty values left out
};

struct FieldReference {
    QString name;
    std::optional<FieldDefinition> definition;
};

struct KeyReference {
    qint32 ordinal = 0;
    QString entity;
    QString field;
};

struct ColumnDefinition {
    QString name;
    QString type; // a type word
    qint32 position = 0;
    bool timeStamp = false;
    std::optional<FieldReference> field;
    std::optional<KeyReference> key;
};

// A data source as its text form describes it: every reference to the dictionary by name, so
// that it means the same in any database. The password is never part of it.
struct EdsDefinition {
    QString name;
    QString type; // "ASCII Data Source" or "ODBC Data Source"
    QString description;
    QString entity;
    bool timeSeries = false;
    QString frequency; // a description from the frequency list; empty when not a time series
    QString fileName;
    QString delimiter;
    QString server;
    QString database;
    QString table;
    QString user;
    QList<ColumnDefinition> columns;

    bool IsOdbc() const { return type == QLatin1String("ODBC Data Source"); }
};

// One thing wrong with a file, where it is: a JSON path such as columns[2].field.name.
struct ExchangeProblem {
    QString path;
    QString message;

    QString Text() const {
        return path.isEmpty() ? message : path + QStringLiteral(": ") + message;
    }
};

} // namespace Orvane
