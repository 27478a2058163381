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

// Passes every call to the real service and keeps the SELECTs it was asked for.
class SelectRecorder : public IQueryService {
public:
    explicit SelectRecorder(IQueryService& inner)
        : m_inner(inner) {}

    QStringList selects;

    std::shared_ptr<IRecordset> OpenRecordset(const QString& statement, qint32 timeout) override {
        selects << statement;
        return m_inner.OpenRecordset(statement, timeout);
    }
    void ExecuteStatement(const QString& s) override { m_inner.ExecuteStatement(s); }
    qint32 NextSequenceValue(const QString& s) override { return m_inner.NextSequenceValue(s); }
    QVariant CallProcedure(const QString& p, const QList<ProcedureParameter>& a) override {
        return m_inner.CallProcedure(p, a);
    }
    QString BuildSetList(const QList<SetPair>& p) override { return m_inner.BuildSetList(p); }
    QString BuildValueList(const QVariantList& v) override { return m_inner.BuildValueList(v); }
    QString FormatLiteral(const QVariant& v) override { return m_inner.FormatLiteral(v); }
    qint32 ValueAsLong(const QVariant& v) override { return m_inner.ValueAsLong(v); }
    bool ValueAsBoolean(const QVariant& v) override { return m_inner.ValueAsBoolean(v); }
    bool ColumnExists(const QString& t, const QString& c) override {
        return m_inner.ColumnExists(t, c);
    }
    qint32 ColumnWidth(const QString& t, const QString& c) override {
        return m_inner.ColumnWidth(t, c);
    }

private:
    IQueryService& m_inner;
};

} // namespace

class DictionaryServiceTest : public StudioDictionaryTest {};

INSTANTIATE_TEST_SUITE_P(Databases, DictionaryServiceTest, AllDatabases(), targetName);

TEST_P(DictionaryServiceTest, EntitiesAndTheExternalDataRule) {
    const auto cell = std::dynamic_pointer_cast<Studio::DictionaryEntity>(service->EntityById(7));
    ASSERT_TRUE(cell);
    EXPECT_EQ(cell->Entity_Name(), QStringLiteral("Cell"));
    EXPECT_EQ(cell->Entity_Label(), QStringLiteral("Cell"));
    EXPECT_EQ(cell->ParentId(), 6);
    EXPECT_GT(cell->FieldId(QStringLiteral("cell_name")), 0);
    EXPECT_EQ(service->EntityById(99), nullptr);

    // Region and Network are computed by the system; unknown and malformed keys find nothing.
    EXPECT_TRUE(service->ExternalDataEntity(QStringLiteral("Traffic"), QStringLiteral("7")));
    EXPECT_EQ(service->ExternalDataEntity(QStringLiteral("Traffic"), QStringLiteral("1")), nullptr);
    EXPECT_EQ(service->ExternalDataEntity(QStringLiteral("Traffic"), QStringLiteral("2")), nullptr);
    EXPECT_EQ(service->ExternalDataEntity(QStringLiteral("Traffic"), QStringLiteral("99")),
              nullptr);
    EXPECT_EQ(service->ExternalDataEntity(QStringLiteral("Traffic"), QString()), nullptr);
    EXPECT_EQ(service->ExternalDataEntity(QStringLiteral("Traffic"), QStringLiteral("7 OR 1=1")),
              nullptr);

    // The entity learns of a field made behind its back only when reloaded.
    db->ExecuteStatement(QStringLiteral("INSERT INTO qvd_field_def (field_id, datatype, "
                                        "field_group_id) VALUES (500, 'I', 3)"));
    db->ExecuteStatement(QStringLiteral("INSERT INTO qvd_dict_name (field_id, entity_id, name) "
                                        "VALUES (500, 7, 'Late_Field')"));
    EXPECT_EQ(cell->FieldId(QStringLiteral("Late_Field")), 0);
    cell->Reload();
    EXPECT_EQ(cell->FieldId(QStringLiteral("late_field")), 500);
}

TEST_P(DictionaryServiceTest, BatchLookupReadsEveryFieldInOneStatement) {
    SelectRecorder recorder(*db);
    Studio::DictionaryService recorded(recorder);

    const auto fields = recorded.FieldsByIds(QStringLiteral("0,4,19,0,999,4,x,28"));
    EXPECT_EQ(recorder.selects.size(), 1);
    QStringList keys = fields.keys();
    keys.sort();
    EXPECT_EQ(keys, QStringList({QStringLiteral("19"), QStringLiteral("28"), QStringLiteral("4")}));

    const auto attempts = fields.value(QStringLiteral("4"));
    ASSERT_TRUE(attempts);
    EXPECT_EQ(attempts->Field_Name(), QStringLiteral("Call_Attempts"));
    EXPECT_EQ(attempts->Entity_Id(), 7);
    EXPECT_EQ(attempts->Entity_Label(), QStringLiteral("Cell"));
    EXPECT_EQ(attempts->Heading2(), QStringLiteral("Attempts"));
    EXPECT_EQ(attempts->DataType(), QStringLiteral("I"));
    EXPECT_EQ(attempts->AggregationPairId(), 1);
    EXPECT_EQ(attempts->TimeAggregator(), QStringLiteral("Sum"));
    EXPECT_EQ(attempts->ElementAggregator(), QStringLiteral("Sum"));
    EXPECT_EQ(attempts->TechnologyMask(), 3);
    EXPECT_EQ(attempts->Technologies(), QStringLiteral("GSM, UMTS"));
    EXPECT_EQ(attempts->ExtraColumnValue(QStringLiteral("Counter")),
              QStringLiteral("pmCallAttempts"));
    EXPECT_EQ(attempts->ExtraColumnValue(QStringLiteral("Vendor")), QStringLiteral("Generic"));
    EXPECT_EQ(fields.value(QStringLiteral("19"))->ExtraColumnValue(QStringLiteral("Unit")),
              QStringLiteral("count"));
    EXPECT_EQ(std::dynamic_pointer_cast<Studio::DictionaryField>(fields.value(QStringLiteral("28")))
                  ->GroupShort(),
              QStringLiteral("EXT"));

    // A list beyond Oracle's 1000 entries in one IN list is still one statement.
    QStringList many;
    for (int id = 1; id <= 1500; ++id)
        many << QString::number(id);
    EXPECT_EQ(recorded.FieldsByIds(many.join(QLatin1Char(','))).size(), 29);
    EXPECT_EQ(recorder.selects.size(), 2);

    EXPECT_TRUE(recorded.FieldsByIds(QStringLiteral("0,0")).isEmpty());
    EXPECT_TRUE(recorded.FieldsByIds(QString()).isEmpty());
    EXPECT_EQ(recorder.selects.size(), 2);

    EXPECT_TRUE(service->FieldById(QStringLiteral("Traffic"), 3));
    EXPECT_EQ(service->FieldById(QStringLiteral("Billing"), 3), nullptr);
    EXPECT_EQ(service->FieldById(QStringLiteral("Traffic"), 999), nullptr);
}

TEST_P(DictionaryServiceTest, FiltersOfTheTemplateTree) {
    const QString traffic = QStringLiteral("Traffic");
    EXPECT_EQ(service->FieldTypeMask(QStringLiteral("External"), traffic),
              QStringLiteral("SYS,EXT"));
    EXPECT_EQ(service->FieldTypeMask(QStringLiteral("all"), traffic),
              QStringLiteral("SYS,KPI,EXT"));
    EXPECT_EQ(service->FieldTypeMask(QStringLiteral("kpi"), traffic), QStringLiteral("KPI"));
    EXPECT_EQ(service->FieldTypeMask(QStringLiteral("External Data"), traffic),
              QStringLiteral("EXT"));
    EXPECT_EQ(service->FieldTypeMask(QStringLiteral("Bogus"), traffic), QString());

    EXPECT_EQ(service->TechnologyTypes(),
              QStringList({QStringLiteral("All"), QStringLiteral("GSM"), QStringLiteral("UMTS"),
                           QStringLiteral("LTE"), QStringLiteral("NR")}));
    EXPECT_EQ(service->TechnologyType(QStringLiteral("lte")), QVariant(4));
    EXPECT_EQ(service->TechnologyType(QStringLiteral("All")), QVariant(0));
    EXPECT_FALSE(service->TechnologyType(QStringLiteral("WiMAX")).isValid());
}

TEST_P(DictionaryServiceTest, WhatTheFieldEditorReads) {
    const FieldTextLimits limits = service->TextLimits();
    EXPECT_EQ(limits.name, 30);
    EXPECT_EQ(limits.description, 80);
    EXPECT_EQ(limits.heading1, 20);
    EXPECT_EQ(limits.heading2, 20);

    EXPECT_EQ(
        service->AggregatorNames(),
        QStringList({QStringLiteral("Sum"), QStringLiteral("Average"), QStringLiteral("Minimum"),
                     QStringLiteral("Maximum"), QStringLiteral("Last")}));
    EXPECT_EQ(service->AggregationPairId(QStringLiteral("Sum"), QStringLiteral("Average")), 2);
    EXPECT_EQ(service->AggregationPairId(QStringLiteral("Last"), QString()), 25);
    EXPECT_EQ(service->AggregationPairId(QStringLiteral("Minimum"), QStringLiteral("Sum")),
              std::nullopt);
    EXPECT_EQ(service->AggregationPairId(QStringLiteral("Median"), QStringLiteral("Sum")),
              std::nullopt);
    EXPECT_EQ(service->AggregationPairId(QString(), QString()), std::nullopt);

    EXPECT_TRUE(service->ElementAggregationOffered());
    db->ExecuteStatement(QStringLiteral("UPDATE qvd_dict_setting SET setting_value = 'N' "
                                        "WHERE setting_name = 'ElementAggregation'"));
    EXPECT_FALSE(service->ElementAggregationOffered());
    db->ExecuteStatement(QStringLiteral("DELETE FROM qvd_dict_setting"));
    EXPECT_FALSE(service->ElementAggregationOffered());

    const QList<ExtraColumn> extra = service->ExtraColumns(QStringLiteral("Traffic"));
    ASSERT_EQ(extra.size(), 3);
    EXPECT_EQ(extra[0].name, QStringLiteral("Counter"));
    EXPECT_EQ(extra[1].name, QStringLiteral("Vendor"));
    EXPECT_EQ(extra[2].name, QStringLiteral("Unit"));
    EXPECT_TRUE(extra[1].inUse);
    EXPECT_FALSE(extra[2].inUse);
    EXPECT_TRUE(service->ExtraColumns(QStringLiteral("Billing")).isEmpty());
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
    EXPECT_EQ(app->modalShown,
              QStringList({QStringLiteral("FieldStyleDialog"), QStringLiteral("dlgColour")}));

    app->modalHandlers.clear();
    app->modalHandlers.push_back([](QDialog& dialog) {
        auto& chooser = static_cast<Studio::FieldStyleDialog&>(dialog);
        chooser.chkBold->setChecked(true);
        chooser.cboColour->setCurrentText(QStringLiteral("Red"));
        chooser.cmdCancel->click();
        return dialog.result();
    });
    EXPECT_FALSE(service->ChooseStyle(style, colour, nullptr));
    EXPECT_EQ(style, 4 | 8);
    EXPECT_EQ(colour, 0x563412);
}

} // namespace Orvane::Testing
