#include "orvane/dialogs/FSelectEntityTree.h"
#include "orvane/host/IEntity.h"
#include "orvane/host/IField.h"
#include "orvane/host/IRecordset.h"
#include "orvane/host/XTemplate.h"
#include "orvane/model/CDataSourcesColumn.h"
#include "orvane/model/CDataSourcesColumns.h"
#include "orvane/model/CDataSourcesData.h"
#include "studio/app/DocumentStore.h"
#include "studio/app/StudioDocumentType.h"
#include "studio/db/TransactionScope.h"
#include "studio/dictionary/DictionaryEntity.h"
#include "tests/integration/StudioDictionaryTest.h"
#include "tests/support/QtPrinters.h"

#include <QPushButton>

namespace Orvane::Testing {

// A whole ASCII document through the library, on the studio's real services: started with the
// entity picked in the real selector, saved, loaded, edited, saved and loaded again.
class DocumentRoundTripTest : public StudioDictionaryTest {
protected:
    using ColumnPtr = CDataSourcesColumns::ColumnPtr;

    void SetUp() override {
        StudioDictionaryTest::SetUp();
        if (IsSkipped() || HasFatalFailure())
            return;
        store = std::make_unique<Studio::DocumentStore>(*db);
    }

    // A field made in the field editor: kept in memory until the document is saved.
    std::shared_ptr<IField> newField(const QString& name, qint32 mask, qint32 colour) {
        auto field = service->NewField();
        FieldSaveRequest request;
        request.name = name;
        request.entityId = 7;
        request.appGroup = "Traffic";
        request.technologyMask = mask;
        request.dataTypeCode = "F";
        request.aggregationPairId = 5;
        request.ownerId = 7;
        request.styleColour = colour;
        request.extraColumns = {{"Counter", name.toLower()}};
        QVariant result;
        EXPECT_TRUE(field->Save(request, result)) << field->LastError().description.toStdString();
        return field;
    }

    static ColumnPtr addColumn(CDataSourcesColumns& columns, const QString& name,
                               const QString& type, qint32 position) {
        ColumnPtr column = columns.Add(name);
        column->setColumn_Type(type);
        column->setPosition(position);
        column->setColPosition(position);
        return column;
    }

    // Saves as the studio does: the document row and the library's rows in one transaction.
    void save(CDataSourcesData& document, bool insert) {
        Studio::TransactionScope transaction(*db);
        store->Write(document, *type, insert);
        document.SaveData();
        transaction.Commit();
    }

    std::unique_ptr<CDataSourcesData> load(qint32 id) {
        auto document = std::make_unique<CDataSourcesData>();
        const auto row = store->Row(id);
        EXPECT_TRUE(row);
        if (row)
            document->InitEdit(*row, type);
        return document;
    }

    qint32 fieldIdNamed(const QString& name) {
        return db->ValueAsLong(scalar(
            QStringLiteral("SELECT field_id v FROM qvd_dict_name WHERE name = '%1'").arg(name)));
    }

    std::unique_ptr<Studio::DocumentStore> store;
    std::shared_ptr<Studio::StudioDocumentType> type = Studio::StudioDocumentType::Ascii();
};

INSTANTIATE_TEST_SUITE_P(Databases, DocumentRoundTripTest, AllDatabases(), targetName);

TEST_P(DocumentRoundTripTest, NewDocumentSavesLoadsEditsAndLoadsAgain) {
    // The entity is picked in the real selector, on the studio's tree.
    app->modalHandlers.push_back([](QDialog& dialog) {
        auto& selector = static_cast<FSelectEntityTree&>(dialog);
        selector.tpl->SelectItem(7);
        selector.cmdButton[1]->click();
        return dialog.result();
    });
    CDataSourcesData document;
    ASSERT_TRUE(document.InitNew(type));
    ASSERT_TRUE(document.Entity());
    ASSERT_EQ(document.Entity()->Entity_Id(), 7);

    document.setDocId(store->NewId());
    document.setDocName("Round Trip");
    document.setFileName("/data/round_trip.csv");
    document.setDelimeter(";");
    CDataSourcesColumns& columns = *document.Columns();
    addColumn(columns, "Time Stamp", "Date", 1)->setIsTimeStamp(true);
    const ColumnPtr cell = addColumn(columns, "CELL", "String", 2);
    cell->setKeyFld_Id(1);
    cell->setKey_Ordinal(1);
    cell->setKeyEntity_Id(7);
    const ColumnPtr rate = addColumn(columns, "RATE", "Float", 3);
    rate->setField(newField("Ext_Rate", 4 | 8, 0x00FF00));
    rate->setFieldAdded(true);
    addColumn(columns, "NOTE", "String", 4);
    save(document, true);

    const qint32 rateId = fieldIdNamed("Ext_Rate");
    ASSERT_GT(rateId, 0);
    EXPECT_EQ(rate->Field_Id(), rateId);
    // The save told the entity of the field it created.
    EXPECT_EQ(
        std::dynamic_pointer_cast<Studio::DictionaryEntity>(document.Entity())->FieldId("Ext_Rate"),
        rateId);
    // What the creating procedure does not take is written when the field is registered.
    EXPECT_EQ(count("qvd_field_def",
                    QStringLiteral("field_id = %1 AND style_colour = 65280 AND owner_id = 7 AND "
                                   "field_group_id = 3")
                        .arg(rateId)),
              1);

    auto loaded = load(document.DocId());
    CDataSourcesColumns& stored = *loaded->Columns();
    ASSERT_EQ(stored.Count(), 4);
    EXPECT_TRUE(stored.Item("Time Stamp")->IsTimeStamp());
    EXPECT_EQ(stored.Item("CELL")->KeyFld_Name(), "Cell_Name");
    EXPECT_EQ(stored.Item("CELL")->KeyEntity(), "Cell");
    const ColumnPtr storedRate = stored.Item("RATE");
    EXPECT_EQ(storedRate->Field_Name(), "Ext_Rate");
    ASSERT_TRUE(storedRate->Field());
    EXPECT_EQ(storedRate->Field()->ExtraColumnValue("Counter"), "ext_rate");
    EXPECT_EQ(storedRate->Field()->Technologies(), "LTE, NR");
    EXPECT_EQ(loaded->FileName(), "/data/round_trip.csv");

    // Delete RATE, move and re-key CELL, add a column with a new field.
    storedRate->setColumnDeleted(true);
    const ColumnPtr storedCell = stored.Item("CELL");
    storedCell->setPosition(5);
    storedCell->setKeyFld_Id(2);
    storedCell->setKey_Ordinal(2);
    storedCell->setKeyDirty(true);
    const ColumnPtr volume = addColumn(stored, "VOLUME", "Float", 6);
    // A column without a row takes its field as it is: its insert creates the field.
    volume->setField(newField("Ext_Volume", 1, 0));
    save(*loaded, false);

    auto again = load(document.DocId());
    CDataSourcesColumns& latest = *again->Columns();
    QStringList names;
    for (const ColumnPtr& column : latest)
        names << column->Column_Name();
    names.sort();
    EXPECT_EQ(names, QStringList({"CELL", "NOTE", "Time Stamp", "VOLUME"}));
    EXPECT_EQ(latest.Item("CELL")->Position(), 5);
    EXPECT_EQ(latest.Item("CELL")->KeyFld_Name(), "CI");
    EXPECT_EQ(latest.Item("CELL")->Key_Ordinal(), 2);
    EXPECT_EQ(latest.Item("VOLUME")->Field_Name(), "Ext_Volume");
    // The deleted column's field went with it; nothing else of the dictionary did.
    EXPECT_EQ(count("qvd_dict_name", "name = 'Ext_Rate'"), 0);
    EXPECT_EQ(count("qvd_dict_name"), 30);
    EXPECT_EQ(count("eds_primarykey", QStringLiteral("eds_id = %1").arg(document.DocId())), 1);
}

} // namespace Orvane::Testing
