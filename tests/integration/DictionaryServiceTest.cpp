#include "orvane/host/IField.h"
#include "orvane/host/IRecordset.h"
#include "studio/dictionary/DictionaryEntity.h"
#include "studio/dictionary/DictionaryField.h"
#include "studio/dictionary/FieldStyleDialog.h"
#include "tests/integration/StudioDictionaryTest.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QPushButton>
#include <gmock/gmock.h>

namespace Orvane::Testing {

using ::testing::HasSubstr;

namespace {

// A second service on the same database that keeps the SELECTs it was asked for.
class SelectRecorder : public Studio::SqlQueryService {
public:
    using SqlQueryService::SqlQueryService;
    QStringList selects;

    std::shared_ptr<IRecordset> OpenRecordset(const QString& statement, qint32 timeout) override {
        selects << statement;
        return SqlQueryService::OpenRecordset(statement, timeout);
    }
};

} // namespace

class DictionaryServiceTest : public StudioDictionaryTest {
protected:
    // What the field editor sends for a field, with the demo's values for Call_Attempts.
    static FieldSaveRequest requestFor(qint32 fieldId, const QString& name, qint32 entityId = 7) {
        FieldSaveRequest request;
        request.fieldId = fieldId;
        request.name = name;
        request.entityId = entityId;
        request.appGroup = "Traffic";
        request.kind = "X";
        request.technologyMask = 3;
        request.dataTypeCode = "I";
        request.aggregationPairId = 1;
        request.ownerId = 7;
        request.savedAt = QDateTime(QDate(2024, 5, 31), QTime(13, 45));
        return request;
    }

    std::shared_ptr<IField> field(qint32 id) { return service->FieldById("Traffic", id); }

    QString text(const QString& statement) { return scalar(statement).toString().trimmed(); }
};

INSTANTIATE_TEST_SUITE_P(Databases, DictionaryServiceTest, AllDatabases(), targetName);

TEST_P(DictionaryServiceTest, EntitiesAndTheExternalDataRule) {
    const auto cell = std::dynamic_pointer_cast<Studio::DictionaryEntity>(service->EntityById(7));
    ASSERT_TRUE(cell);
    EXPECT_EQ(cell->Entity_Name() + cell->Entity_Label() + QString::number(cell->ParentId()),
              "CellCell6");
    EXPECT_GT(cell->FieldId("cell_name"), 0);
    EXPECT_FALSE(service->EntityById(99));

    // Region and Network are computed by the system; unknown and malformed keys find nothing.
    EXPECT_TRUE(service->ExternalDataEntity("Traffic", "7"));
    for (const char* key : {"1", "2", "99", "", "7 OR 1=1"})
        EXPECT_EQ(service->ExternalDataEntity("Traffic", key), nullptr) << key;

    // The entity learns of a field made behind its back only when reloaded.
    db->ExecuteStatement("INSERT INTO qvd_field_def (field_id, datatype, "
                         "field_group_id) VALUES (500, 'I', 3)");
    db->ExecuteStatement("INSERT INTO qvd_dict_name (field_id, entity_id, name) "
                         "VALUES (500, 7, 'Late_Field')");
    EXPECT_EQ(cell->FieldId("Late_Field"), 0);
    cell->Reload();
    EXPECT_EQ(cell->FieldId("late_field"), 500);
}

// The fields in one statement and the technologies' names in one more, whatever the ids.
TEST_P(DictionaryServiceTest, BatchLookupReadsTheFieldsAndTheTechnologyNamesOnce) {
    SelectRecorder recorder(connectionText());
    Studio::DictionaryService recorded(recorder);

    const auto fields = recorded.FieldsByIds("0,4,19,0,999,4,x,28");
    EXPECT_EQ(recorder.selects.size(), 2);
    QStringList keys = fields.keys();
    keys.sort();
    EXPECT_EQ(keys, QStringList({"19", "28", "4"}));

    const auto attempts = fields.value("4");
    ASSERT_TRUE(attempts);
    EXPECT_EQ(
        QStringList({attempts->Field_Name(), QString::number(attempts->Entity_Id()),
                     attempts->Entity_Label(), attempts->Heading2(), attempts->DataType(),
                     QString::number(attempts->AggregationPairId()), attempts->TimeAggregator(),
                     attempts->ElementAggregator(), QString::number(attempts->TechnologyMask()),
                     attempts->Technologies(), attempts->ExtraColumnValue("Counter"),
                     attempts->ExtraColumnValue("Vendor")}),
        QStringList({"Call_Attempts", "7", "Cell", "Attempts", "I", "1", "Sum", "Sum", "3",
                     "GSM, UMTS", "pmCallAttempts", "Generic"}));
    EXPECT_EQ(fields.value("19")->ExtraColumnValue("Unit"), "count");
    EXPECT_EQ(std::dynamic_pointer_cast<Studio::DictionaryField>(fields.value("28"))->GroupShort(),
              "EXT");

    // A list beyond Oracle's 1000 entries in one IN list is still one statement of fields.
    QStringList many;
    for (int id = 1; id <= 1500; ++id)
        many << QString::number(id);
    EXPECT_EQ(recorded.FieldsByIds(many.join(QLatin1Char(','))).size(), 29);
    EXPECT_EQ(recorder.selects.size(), 4);

    EXPECT_EQ(
        std::tuple(recorded.FieldsByIds("0,0").size(), recorded.FieldsByIds(QString()).size()),
        std::tuple(0, 0));
    EXPECT_EQ(recorder.selects.size(), 4);

    EXPECT_TRUE(service->FieldById("Traffic", 3));
    EXPECT_EQ(std::tuple(service->FieldById("Billing", 3) == nullptr,
                         service->FieldById("Traffic", 999) == nullptr),
              std::tuple(true, true));
}

TEST_P(DictionaryServiceTest, FiltersOfTheTemplateTree) {
    QStringList masks;
    for (const char* filter : {"External", "all", "kpi", "External Data", "Bogus"})
        masks << service->FieldTypeMask(filter, "Traffic");
    EXPECT_EQ(masks, QStringList({"SYS,EXT", "SYS,KPI,EXT", "KPI", "EXT", ""}));

    EXPECT_EQ(service->TechnologyTypes(), QStringList({"All", "GSM", "UMTS", "LTE", "NR"}));
    EXPECT_EQ(QVariantList({service->TechnologyType("lte"), service->TechnologyType("All"),
                            service->TechnologyType("WiMAX")}),
              QVariantList({4, 0, QVariant()}));
}

TEST_P(DictionaryServiceTest, WhatTheFieldEditorReads) {
    const FieldTextLimits limits = service->TextLimits();
    EXPECT_EQ(QList<qint32>({limits.name, limits.description, limits.heading1, limits.heading2}),
              QList<qint32>({30, 80, 20, 20}));

    EXPECT_EQ(service->AggregatorNames(),
              QStringList({"Sum", "Average", "Minimum", "Maximum", "Last"}));
    EXPECT_EQ(service->AggregationPairId("Sum", "Average"), 2);
    EXPECT_EQ(service->AggregationPairId("Last", QString()), 25);
    for (const char* time : {"Minimum", "Median", ""})
        EXPECT_EQ(service->AggregationPairId(time, *time == 'M' ? "Sum" : ""), std::nullopt);

    EXPECT_TRUE(service->ElementAggregationOffered());
    db->ExecuteStatement("UPDATE qvd_dict_setting SET setting_value = 'N' "
                         "WHERE setting_name = 'ElementAggregation'");
    EXPECT_FALSE(service->ElementAggregationOffered());
    db->ExecuteStatement("DELETE FROM qvd_dict_setting");
    EXPECT_FALSE(service->ElementAggregationOffered());

    QStringList extra;
    for (const ExtraColumn& column : service->ExtraColumns("Traffic"))
        extra << column.name + (column.inUse ? "" : " (not in use)");
    EXPECT_EQ(extra, QStringList({"Counter", "Vendor", "Unit (not in use)"}));
    EXPECT_TRUE(service->ExtraColumns("Billing").isEmpty());
}

// The style chooser runs its real dialog, and that its colour picker, through the host.
TEST_P(DictionaryServiceTest, StyleChooserTakesFontAndColour) {
    app->modalHandlers.push_back([](QDialog& dialog) {
        auto& style = static_cast<Studio::FieldStyleDialog&>(dialog);
        EXPECT_TRUE(style.chkItalic->isChecked());
        style.chkItalic->setChecked(false);
        style.chkUnderline->setChecked(true);
        style.cmdColour->click();
        style.cmdOk->click();
        return dialog.result();
    });
    app->modalHandlers.push_back([](QDialog& dialog) {
        static_cast<QColorDialog&>(dialog).setCurrentColor(QColor(0x12, 0x34, 0x56));
        return int(QDialog::Accepted);
    });
    qint32 style = 2 | 8;
    qint32 colour = 0;
    ASSERT_TRUE(service->ChooseStyle(style, colour, nullptr));
    EXPECT_EQ(std::tuple(style, colour), std::tuple(4 | 8, 0x563412));
    EXPECT_EQ(app->modalShown, QStringList({"FieldStyleDialog", "dlgColour"}));

    app->modalHandlers.clear();
    app->modalHandlers.push_back([](QDialog& dialog) {
        auto& chooser = static_cast<Studio::FieldStyleDialog&>(dialog);
        chooser.chkBold->setChecked(true);
        chooser.cboColour->setCurrentText("Red");
        chooser.cmdCancel->click();
        return dialog.result();
    });
    EXPECT_FALSE(service->ChooseStyle(style, colour, nullptr));
    EXPECT_EQ(std::tuple(style, colour), std::tuple(4 | 8, 0x563412));
}

TEST_P(DictionaryServiceTest, StoredFieldIsWrittenAtOnce) {
    const auto attempts = field(4);
    ASSERT_TRUE(attempts);
    FieldSaveRequest request = requestFor(4, "  Call_Attempts_Total ");
    request.description = "All call set-up attempts, O'Brien's count";
    request.heading1 = "Calls";
    request.heading2 = "Tried";
    request.aggregationPairId = 2;
    request.technologyMask = 1 | 4;
    request.dataTypeCode = "F";
    request.style = 5;
    request.styleColour = 0x0000FF;
    request.extraColumns = {
        {"Counter", "pmCallAttemptsTotal"}, {"Vendor", QString()}, {"Unit", QString()}};
    QVariant result;
    ASSERT_TRUE(attempts->Save(request, result)) << attempts->LastError().description.toStdString();
    EXPECT_EQ(result, QVariant(4));

    EXPECT_EQ(text("SELECT name v FROM qvd_dict_name WHERE field_id = 4"), "Call_Attempts_Total");
    EXPECT_EQ(text("SELECT field_desc v FROM qvd_field_def WHERE field_id = 4"),
              request.description);
    EXPECT_EQ(count("qvd_field_def", "field_id = 4 AND field_aggregator = 2 AND datatype = 'F' AND "
                                     "field_style = 5 AND style_colour = 255 AND owner_id = 7"),
              1);
    EXPECT_EQ(QList<qint32>({count("qvd_field_tech", "field_id = 4"),
                             count("qvd_field_tech", "field_id = 4 AND tech_id = 3")}),
              QList<qint32>({2, 1}));
    EXPECT_EQ(text("SELECT extra_value v FROM qvd_field_extra "
                   "WHERE field_id = 4 AND extra_column_id = 1"),
              "pmCallAttemptsTotal");
    EXPECT_EQ(count("qvd_field_extra", "field_id = 4"), 1);
    // A column not in use keeps its value, whatever the editor sends for it.
    QVariant seizureResult;
    FieldSaveRequest seizures = requestFor(19, "Seizures", 8);
    seizures.extraColumns = {{"Unit", QString()}};
    ASSERT_TRUE(field(19)->Save(seizures, seizureResult));
    EXPECT_EQ(count("qvd_field_extra", "field_id = 19 AND extra_value = 'count'"), 1);

    // The object holds what the dictionary now holds, as a fresh lookup reads it.
    const auto reread = field(4);
    for (const auto& object : {attempts, reread}) {
        EXPECT_EQ(
            QStringList(
                {object->Field_Name(), object->TimeAggregator(), object->ElementAggregator(),
                 object->Technologies(), QString::number(object->TechnologyMask()),
                 QString::number(object->StyleColour()), object->ExtraColumnValue("Vendor")}),
            QStringList({"Call_Attempts_Total", "Sum", "Average", "GSM, LTE", "5", "255", ""}));
    }
}

TEST_P(DictionaryServiceTest, TakenNamesAndRefusalsChangeNothing) {
    const auto attempts = field(4);
    QVariant result;

    EXPECT_FALSE(attempts->Save(requestFor(4, " cell_NAME "), result));
    EXPECT_EQ(std::tuple(attempts->LastError().code, attempts->LastError().flag),
              std::tuple(2, true));
    EXPECT_EQ(attempts->Field_Name(), "Call_Attempts");

    // Its own name in another case is no clash; a name of another entity is none either.
    EXPECT_TRUE(attempts->Save(requestFor(4, "CALL_ATTEMPTS"), result));
    EXPECT_TRUE(attempts->Save(requestFor(4, "Site_Name"), result));

    FieldSaveRequest badType = requestFor(4, "Other");
    badType.dataTypeCode = QString();
    FieldSaveRequest badPair = requestFor(4, "Other");
    badPair.aggregationPairId = 99;
    FieldSaveRequest badMask = requestFor(4, "Other");
    badMask.technologyMask = 16;
    for (const FieldSaveRequest& request : {badType, badPair, badMask}) {
        EXPECT_FALSE(attempts->Save(request, result));
        EXPECT_EQ(std::tuple(attempts->LastError().code, attempts->LastError().flag,
                             attempts->LastError().description.isEmpty()),
                  std::tuple(1, false, false));
    }
    EXPECT_EQ(text("SELECT name v FROM qvd_dict_name WHERE field_id = 4"), "Site_Name");

    // A database error comes back with the database's message, and nothing of the save stays.
    const auto region = field(27);
    db->ExecuteStatement("DELETE FROM qvd_field_def WHERE field_id = 27");
    EXPECT_FALSE(region->Save(requestFor(27, "Region_Label", 2), result));
    EXPECT_EQ(std::tuple(region->LastError().code, region->Field_Name()),
              std::tuple(1, QString("Region_Name")));
    EXPECT_THAT(region->LastError().description.toStdString(), HasSubstr("27"));
}

TEST_P(DictionaryServiceTest, NewFieldIsKeptUntilTheDocumentCreatesIt) {
    const auto fresh = service->NewField();
    QVariant result;
    FieldSaveRequest request = requestFor(0, " TG_Overflow_Rate ", 8);
    request.aggregationPairId = 22;
    request.technologyMask = 2;
    request.heading1 = "Overflow";
    ASSERT_TRUE(fresh->Save(request, result)) << fresh->LastError().description.toStdString();
    EXPECT_EQ(
        QList<qint32>({result.toInt(), count("qvd_dict_name", "entity_id = 8"), fresh->Field_Id()}),
        QList<qint32>({0, 5, 0}));
    EXPECT_EQ(QStringList({fresh->Field_Name(), fresh->Entity_Label(), fresh->TimeAggregator(),
                           fresh->ElementAggregator(), fresh->Technologies()}),
              QStringList({"TG_Overflow_Rate", "Trunk Group", "Average", "", "UMTS"}));

    EXPECT_FALSE(fresh->Save(requestFor(0, "seizures", 8), result));
    EXPECT_EQ(fresh->LastError().code, 2);
    EXPECT_FALSE(fresh->Save(requestFor(0, "Anything", 99), result));
    EXPECT_EQ(fresh->LastError().code, 1);
    // A new object cannot claim a stored field.
    EXPECT_FALSE(fresh->Save(requestFor(4, "Anything"), result));
    EXPECT_EQ(fresh->Field_Name(), "TG_Overflow_Rate");
}

} // namespace Orvane::Testing
