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
        request.appGroup = QStringLiteral("Traffic");
        request.technologyMask = mask;
        request.dataTypeCode = QStringLiteral("F");
        request.aggregationPairId = 5;
        request.ownerId = 7;
        request.styleColour = colour;
        request.extraColumns = {{QStringLiteral("Counter"), name.toLower()}};
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
    document.setDocName(QStringLiteral("Round Trip"));
    document.setFileName(QStringLiteral("/data/round_trip.csv"));
    document.setDelimeter(QStringLiteral(";"));
    CDataSourcesColumns& columns = *document.Columns();
    addColumn(columns, QStringLiteral("Time Stamp"), QStringLiteral("Date"), 1)
        ->setIsTimeStamp(true);
    const ColumnPtr cell = addColumn(columns, QStringLiteral("CELL"), QStringLiteral("String"), 2);
    cell->setKeyFld_Id(1);
    cell->setKey_Ordinal(1);
    cell->setKeyEntity_Id(7);
    const ColumnPtr rate = addColumn(columns, QStringLiteral("RATE"), QStringLiteral("Float"), 3);
    rate->setField(newField(QStringLiteral("Ext_Rate"), 4 | 8, 0x00FF00));
    rate->setFieldAdded(true);
    addColumn(columns, QStringLiteral("NOTE"), QStringLiteral("String"), 4);
    save(document, true);

    const qint32 rateId = fieldIdNamed(QStringLiteral("Ext_Rate"));
    ASSERT_GT(rateId, 0);
    EXPECT_EQ(rate->Field_Id(), rateId);
    // The save told the entity of the field it created.
    EXPECT_EQ(std::dynamic_pointer_cast<Studio::DictionaryEntity>(document.Entity())
                  ->FieldId(QStringLiteral("Ext_Rate")),
              rateId);
    const QString doc = QString::number(document.DocId());
    EXPECT_EQ(count(QStringLiteral("eds_primarykey"),
                    QStringLiteral("eds_id = %1 AND field_id = 1 AND ordinal = 1").arg(doc)),
              1);
    EXPECT_EQ(count(QStringLiteral("qvd_dict_name"),
                    QStringLiteral("field_id = %1 AND entity_id = 7").arg(rateId)),
              1);
    EXPECT_EQ(count(QStringLiteral("qvd_field_tech"), QStringLiteral("field_id = %1").arg(rateId)),
              2);
    EXPECT_EQ(count(QStringLiteral("qvd_eds_def"),
                    QStringLiteral("eds_id = %1 AND field_id = %2").arg(doc).arg(rateId)),
              1);
    EXPECT_EQ(count(QStringLiteral("qvd_field_def"),
                    QStringLiteral("field_id = %1 AND style_colour = 65280 AND owner_id = 7 AND "
                                   "field_group_id = 3")
                        .arg(rateId)),
              1);

    auto loaded = load(document.DocId());
    CDataSourcesColumns& stored = *loaded->Columns();
    ASSERT_EQ(stored.Count(), 4);
    EXPECT_TRUE(stored.Item(QStringLiteral("Time Stamp"))->IsTimeStamp());
    EXPECT_EQ(stored.Item(QStringLiteral("CELL"))->KeyFld_Name(), QStringLiteral("Cell_Name"));
    EXPECT_EQ(stored.Item(QStringLiteral("CELL"))->KeyEntity(), QStringLiteral("Cell"));
    const ColumnPtr storedRate = stored.Item(QStringLiteral("RATE"));
    EXPECT_EQ(storedRate->Field_Name(), QStringLiteral("Ext_Rate"));
    ASSERT_TRUE(storedRate->Field());
    EXPECT_EQ(storedRate->Field()->ExtraColumnValue(QStringLiteral("Counter")),
              QStringLiteral("ext_rate"));
    EXPECT_EQ(storedRate->Field()->Technologies(), QStringLiteral("LTE, NR"));
    EXPECT_EQ(loaded->FileName(), QStringLiteral("/data/round_trip.csv"));

    // Rename NOTE, delete RATE, move and re-key CELL, add a column with a new field.
    const ColumnPtr note = stored.Item(QStringLiteral("NOTE"));
    const qint32 noteId = note->Column_Id();
    auto renamed = note->Clone();
    renamed->setColumn_Name(QStringLiteral("REMARK"));
    renamed->setDirty(true);
    stored.Remove(QStringLiteral("NOTE"));
    stored.AddItem(*renamed);
    stored.Item(QStringLiteral("REMARK"))->setColPosition(4);
    storedRate->setColumnDeleted(true);
    const ColumnPtr storedCell = stored.Item(QStringLiteral("CELL"));
    storedCell->setPosition(5);
    storedCell->setKeyFld_Id(2);
    storedCell->setKey_Ordinal(2);
    storedCell->setKeyDirty(true);
    const ColumnPtr volume =
        addColumn(stored, QStringLiteral("VOLUME"), QStringLiteral("Float"), 6);
    // A column without a row takes its field as it is: its insert creates the field.
    volume->setField(newField(QStringLiteral("Ext_Volume"), 1, 0));
    save(*loaded, false);

    auto again = load(document.DocId());
    CDataSourcesColumns& latest = *again->Columns();
    QStringList names;
    for (const ColumnPtr& column : latest)
        names << column->Column_Name();
    names.sort();
    EXPECT_EQ(names, QStringList({QStringLiteral("CELL"), QStringLiteral("REMARK"),
                                  QStringLiteral("Time Stamp"), QStringLiteral("VOLUME")}));
    EXPECT_EQ(latest.Item(QStringLiteral("REMARK"))->Column_Id(), noteId);
    EXPECT_EQ(latest.Item(QStringLiteral("CELL"))->Position(), 5);
    EXPECT_EQ(latest.Item(QStringLiteral("CELL"))->KeyFld_Name(), QStringLiteral("CI"));
    EXPECT_EQ(latest.Item(QStringLiteral("CELL"))->Key_Ordinal(), 2);
    EXPECT_EQ(latest.Item(QStringLiteral("VOLUME"))->Field_Name(), QStringLiteral("Ext_Volume"));
    // The deleted column's field went with it; nothing else of the dictionary did.
    EXPECT_EQ(count(QStringLiteral("qvd_dict_name"), QStringLiteral("name = 'Ext_Rate'")), 0);
    EXPECT_EQ(count(QStringLiteral("qvd_dict_name")), 30);
    EXPECT_EQ(count(QStringLiteral("eds_primarykey"), QStringLiteral("eds_id = %1").arg(doc)), 1);
}

} // namespace Orvane::Testing
