#include "orvane/host/IRecordset.h"
#include "studio/dictionary/DictionaryEntity.h"
#include "studio/dictionary/DictionaryField.h"
#include "studio/dictionary/FieldStyleDialog.h"
#include "tests/integration/StudioDictionaryTest.h"
#include "tests/support/QtPrinters.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QPushButton>

namespace Orvane::Testing {

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

class DictionaryServiceTest : public StudioDictionaryTest {};

INSTANTIATE_TEST_SUITE_P(Databases, DictionaryServiceTest, AllDatabases(), targetName);

TEST_P(DictionaryServiceTest, EntitiesAndTheExternalDataRule) {
    const auto cell = std::dynamic_pointer_cast<Studio::DictionaryEntity>(service->EntityById(7));
    ASSERT_TRUE(cell);
    EXPECT_EQ(cell->Entity_Name(), "Cell");
    EXPECT_EQ(cell->Entity_Label(), "Cell");
    EXPECT_EQ(cell->ParentId(), 6);
    EXPECT_GT(cell->FieldId("cell_name"), 0);
    EXPECT_EQ(service->EntityById(99), nullptr);

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

    EXPECT_TRUE(recorded.FieldsByIds("0,0").isEmpty());
    EXPECT_TRUE(recorded.FieldsByIds(QString()).isEmpty());
    EXPECT_EQ(recorder.selects.size(), 4);

    EXPECT_TRUE(service->FieldById("Traffic", 3));
    EXPECT_EQ(service->FieldById("Billing", 3), nullptr);
    EXPECT_EQ(service->FieldById("Traffic", 999), nullptr);
}

TEST_P(DictionaryServiceTest, FiltersOfTheTemplateTree) {
    const QString traffic = "Traffic";
    EXPECT_EQ(service->FieldTypeMask("External", traffic), "SYS,EXT");
    EXPECT_EQ(service->FieldTypeMask("all", traffic), "SYS,KPI,EXT");
    EXPECT_EQ(service->FieldTypeMask("kpi", traffic), "KPI");
    EXPECT_EQ(service->FieldTypeMask("External Data", traffic), "EXT");
    EXPECT_EQ(service->FieldTypeMask("Bogus", traffic), QString());

    EXPECT_EQ(service->TechnologyTypes(), QStringList({"All", "GSM", "UMTS", "LTE", "NR"}));
    EXPECT_EQ(service->TechnologyType("lte"), QVariant(4));
    EXPECT_EQ(service->TechnologyType("All"), QVariant(0));
    EXPECT_FALSE(service->TechnologyType("WiMAX").isValid());
}

TEST_P(DictionaryServiceTest, WhatTheFieldEditorReads) {
    const FieldTextLimits limits = service->TextLimits();
    EXPECT_EQ(QList<qint32>({limits.name, limits.description, limits.heading1, limits.heading2}),
              QList<qint32>({30, 80, 20, 20}));

    EXPECT_EQ(service->AggregatorNames(),
              QStringList({"Sum", "Average", "Minimum", "Maximum", "Last"}));
    EXPECT_EQ(service->AggregationPairId("Sum", "Average"), 2);
    EXPECT_EQ(service->AggregationPairId("Last", QString()), 25);
    EXPECT_EQ(service->AggregationPairId("Minimum", "Sum"), std::nullopt);
    EXPECT_EQ(service->AggregationPairId("Median", "Sum"), std::nullopt);
    EXPECT_EQ(service->AggregationPairId(QString(), QString()), std::nullopt);

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
    EXPECT_EQ(style, 4 | 8);
    EXPECT_EQ(colour, 0x563412);
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
    EXPECT_EQ(style, 4 | 8);
    EXPECT_EQ(colour, 0x563412);
}

} // namespace Orvane::Testing
