#include "studio/app/DefinitionTransfer.h"
#include "studio/app/DocumentStore.h"
#include "tests/integration/StudioDictionaryTest.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace Orvane::Testing {

namespace {

using Studio::DefinitionTransfer;
using Studio::ImportOutcome;

// A site feed with what the demo sources lack: a new field with extra values, keys of two
// entities, quotes and blanks in texts. In canonical form: keys sorted, indented as Qt writes it.
const QByteArray SiteEnergy = QJsonDocument::fromJson(R"json({
  "format": "orvane-eds/1", "type": "ASCII Data Source", "name": "Site Energy",
  "description": "Daily energy per site, \"as metered\"", "entity": "Site", "frequency": "Daily",
  "timeSeries": true, "settings": {"delimiter": ";", "fileName": "/data/feeds/site energy.csv"},
  "columns": [
    {"name": "Time Stamp", "position": 1, "timeStamp": true, "type": "Date"},
    {"name": "SITE CODE", "position": 2, "timeStamp": false, "type": "String",
     "key": {"entity": "Site", "field": "Site_Code", "ordinal": 1}},
    {"name": "ENERGY", "position": 3, "timeStamp": false, "type": "Float",
     "key": {"entity": "Region", "field": "Region_Name", "ordinal": 2},
     "field": {"name": "Rectifier_Energy", "dataType": "Float", "style": 2, "styleColour": 255,
               "description": "Energy the rectifiers delivered, kWh", "heading1": "Rectifier",
               "heading2": "kWh", "technologies": ["LTE", "NR"], "timeAggregator": "Sum",
               "elementAggregator": "Average",
               "extra": {"Counter": "pmRectifierEnergy", "Vendor": "Acme O'Power"}}}]
})json")
                                  .toJson();

QByteArray edited(const QByteArray& text, const std::function<void(QJsonObject&)>& edit) {
    QJsonObject top = QJsonDocument::fromJson(text).object();
    edit(top);
    return QJsonDocument(top).toJson();
}

} // namespace

class ExchangeTest : public StudioDictionaryTest {
protected:
    QMap<QString, QByteArray> exportAll() {
        QMap<QString, QByteArray> files;
        DefinitionTransfer transfer(*db);
        for (const auto& document : transfer.List())
            files.insert(document.name, transfer.Export(document.id));
        return files;
    }

    ImportOutcome import(const QList<QByteArray>& texts, bool replace = false) {
        QList<Studio::ImportInput> inputs;
        for (const QByteArray& text : texts)
            inputs.append({QString(), text});
        return DefinitionTransfer(*db).Import(inputs, replace);
    }
};

INSTANTIATE_TEST_SUITE_P(Databases, ExchangeTest, AllDatabases(), targetName);

// The demo's sources, exported, deleted and imported again with a new one, export as before.
TEST_P(ExchangeTest, SourcesSurviveExportDeleteImportByteForByteInCanonicalForm) {
    db->ExecuteStatement("UPDATE eds_odbc_file SET db_password = 'S3cret!'");
    QMap<QString, QByteArray> before = exportAll();
    ASSERT_EQ(before.size(), 2);
    for (const QByteArray& text : before)
        EXPECT_FALSE(text.contains("S3cret!")) << text.constData();
    Studio::DocumentStore store(*db);
    for (const auto& document : store.List())
        ASSERT_TRUE(store.Delete(document.id));
    ASSERT_EQ(count("eds_document"), 0);

    const ImportOutcome outcome = import(before.values() << SiteEnergy);
    ASSERT_TRUE(outcome.Succeeded()) << outcome.problems.join(QLatin1Char('\n')).toStdString();
    before.insert("Site Energy", SiteEnergy);
    EXPECT_EQ(exportAll(), before);
    EXPECT_EQ(
        std::tuple(count("qvd_dict_name", "name = 'Rectifier_Energy'"), count("eds_primarykey")),
        std::tuple(1, 4));
}

TEST_P(ExchangeTest, ReplacingNeedsConsentAndAFieldTheDictionaryHasIsReused) {
    const QByteArray cell = exportAll().value("Cell Traffic Feed");
    const QStringList unchanged = savedRows();
    ImportOutcome outcome = import({cell});
    EXPECT_EQ(std::tuple(outcome.nameTaken, savedRows()), std::tuple(true, unchanged));

    outcome = import({cell}, true);
    ASSERT_TRUE(outcome.Succeeded()) << outcome.problems.join(QLatin1Char('\n')).toStdString();
    EXPECT_EQ(count("eds_document", "name = 'Cell Traffic Feed'"), 1);

    // A copy under another name maps its column to the same HO_Attempts, creating nothing.
    const qint32 fields = count("qvd_field_def");
    outcome = import({edited(cell, [](QJsonObject& top) { top["name"] = "Cell Traffic Copy"; })});
    ASSERT_TRUE(outcome.Succeeded()) << outcome.problems.join(QLatin1Char('\n')).toStdString();
    EXPECT_EQ(count("qvd_field_def"), fields);
    EXPECT_EQ(count("qvd_eds_def d, qvd_dict_name n",
                    "d.field_id = n.field_id AND n.name = 'HO_Attempts'"),
              2);
}

TEST_P(ExchangeTest, RefusedFilesListTheirProblemsAndChangeNothing) {
    const auto set = [](const QString& key, const QJsonValue& value) {
        return [=](QJsonObject& top) { top[key] = value; };
    };
    const auto setInColumn = [](int index, const QString& key, const QJsonValue& value) {
        return [=](QJsonObject& top) {
            QJsonArray columns = top["columns"].toArray();
            QJsonObject column = columns[index].toObject();
            column[key] = value;
            columns[index] = column;
            top["columns"] = columns;
        };
    };
    const struct {
        const char* what;
        QByteArray text;
        QStringList expected; // texts the problems must hold, in order
        QByteArray goodFileBefore = {};
    } cases[] = {
        {"not JSON", "{\"format\": \"orvane-eds/1\",", {"not JSON"}},
        {"another version",
         edited(SiteEnergy, set("format", "orvane-eds/2")),
         {"format: \"orvane-eds/2\" is not supported"}},
        {"unknown entity and frequency",
         edited(SiteEnergy,
                [&](QJsonObject& top) {
                    set("entity", "Antenna")(top);
                    set("frequency", "Monthly")(top);
                }),
         {"entity: there is no entity named \"Antenna\"",
          "frequency: there is no frequency \"Monthly\""}},
        {"entity closed to external data",
         edited(SiteEnergy, set("entity", "Region")),
         {"entity: the entity \"Region\" may not be used"}},
        {"unknown key field",
         edited(SiteEnergy,
                setInColumn(
                    1, "key",
                    QJsonObject{{"entity", "Site"}, {"field", "Site_Colour"}, {"ordinal", 1}})),
         {QStringLiteral(
             "columns[1].key.field: the entity \"Site\" has no field \"Site_Colour\"")}},
        {"field neither known nor defined",
         edited(SiteEnergy, setInColumn(2, "field", QJsonObject{{"name", "Rectifier_Power"}})),
         {QStringLiteral("columns[2].field.name: the entity \"Site\" has no field "
                         "\"Rectifier_Power\"")}},
        {"new field against the field editor's rules",
         edited(SiteEnergy, setInColumn(2, "field",
                                        QJsonObject{{"name", "Rectifier_Power"},
                                                    {"dataType", "Date"},
                                                    {"technologies", QJsonArray{"GSM", "WiMAX"}},
                                                    {"timeAggregator", "Minimum"},
                                                    {"elementAggregator", "Sum"},
                                                    {"extra", QJsonObject{{"Unit", "kW"}}}})),
         {"columns[2].field.technologies[1]: there is no technology \"WiMAX\"",
          "columns[2].field.dataType: a field's data type is Integer, Float or",
          "columns[2].field.timeAggregator: \"Minimum\" over time with \"Sum\"",
          "columns[2].field.extra.Unit: the dictionary has no extra column"}},
        {"form errors together",
         edited(SiteEnergy,
                [&](QJsonObject& top) {
                    setInColumn(0, "position", 501)(top);
                    setInColumn(1, "type", "Text")(top);
                    setInColumn(2, "name", "time stamp")(top);
                    set("settings", QJsonObject{{"delimiter", ";"},
                                                {"fileName", "x.csv"},
                                                {"password", "secret"}})(top);
                }),
         {"settings.password: a password is never kept",
          "columns[0].position: must be a whole number from 1 to 500",
          "columns[1].type: \"Text\" is not one of",
          "columns[2].name: another column is named \"time stamp\""}},
        // A good file goes first and is written, then rolled back with the rest.
        {"a good file before a bad one",
         edited(SiteEnergy,
                [&](QJsonObject& top) {
                    set("name", "Site Energy Copy")(top);
                    set("entity", "Antenna")(top);
                }),
         {"entity: there is no entity named \"Antenna\""},
         SiteEnergy},
    };
    const QStringList unchanged = savedRows();
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const ImportOutcome outcome =
            c.goodFileBefore.isEmpty() ? import({c.text}) : import({c.goodFileBefore, c.text});
        ASSERT_EQ(outcome.problems.size(), c.expected.size())
            << outcome.problems.join(QLatin1Char('\n')).toStdString();
        for (qsizetype i = 0; i < c.expected.size(); ++i)
            EXPECT_TRUE(outcome.problems[i].contains(c.expected[i]))
                << outcome.problems[i].toStdString();
        EXPECT_EQ(savedRows(), unchanged);
    }
}

} // namespace Orvane::Testing
