#include "orvane/host/IRecordset.h"
#include "orvane/model/CDataSourcesColumn.h"
#include "orvane/model/CDataSourcesColumns.h"
#include "orvane/model/ColumnSave.h"
#include "orvane/model/MSQL.h"
#include "studio/db/TransactionScope.h"
#include "tests/integration/DatabaseTest.h"

namespace Orvane::Testing {

// The library's column query and its save routines against the real schema: what is saved is
// what the column query reads back, in both forms of eds_column.
class ColumnSaveRoundTripTest : public DatabaseTest {
protected:
    // The rows the column query reads back, as "name|field id|key id|key field name".
    QStringList columnRows(qint32 edsId) {
        QStringList rows;
        for (auto rst = db->OpenRecordset(MSQL::ColumnQuery(edsId)); !rst->Eof(); rst->MoveNext())
            rows << QStringList{rst->Value("col_name").toString(),
                                QString::number(db->ValueAsLong(rst->Value("Field_Id"))),
                                QString::number(db->ValueAsLong(rst->Value("pk_id"))),
                                rst->Value("pkFld_name").toString()}
                        .join('|');
        return rows;
    }

    qint32 newDocument(const QString& name) {
        const qint32 id = db->NextSequenceValue("sq_eds_document");
        db->ExecuteStatement(
            QStringLiteral("INSERT INTO eds_document (id, name, eds_type, entity_id, "
                           "is_time_series, doc_type) VALUES(") +
            db->BuildValueList({id, name, "A", 7, "Y", "ASCII Data Source"}) + ")");
        return id;
    }

    CDataSourcesColumns::ColumnPtr addColumn(CDataSourcesColumns& columns, const QString& name,
                                             const QString& type, qint32 position,
                                             qint32 editorPosition) {
        auto column = columns.Add(name);
        column->setColumn_Type(type);
        column->setPosition(position);
        column->setColPosition(editorPosition);
        return column;
    }
};

INSTANTIATE_TEST_SUITE_P(Databases, ColumnSaveRoundTripTest, AllDatabases(), targetName);

// The demo document: the time stamp, a key column, a column mapped to a field, a plain one.
TEST_P(ColumnSaveRoundTripTest, LoadColumnsFillsTheModel) {
    dictionary->addField(28, "HO_Attempts", 7);
    CDataSourcesColumns columns;
    columns.LoadColumns(1);
    ASSERT_EQ(columns.Count(), 4);
    EXPECT_EQ(columns.EDS_Id(), 1);
    EXPECT_EQ(columns.TSColumn(), columns.Item(1));
    EXPECT_EQ(columns.Item(1)->Column_Name(), "Time Stamp");
    const auto key = columns.Item("CELL");
    EXPECT_EQ(
        QList<qint32>({key->PK_Id(), key->KeyFld_Id(), key->Key_Ordinal(), key->KeyEntity_Id()}),
        QList<qint32>({1, 1, 1, 7}));
    EXPECT_EQ(key->KeyFld_Name() + "|" + key->KeyEntity() + "|" + key->KeyEntity_Label(),
              "Cell_Name|Cell|Cell");
    EXPECT_EQ(key->Field(), nullptr);
    const auto mapped = columns.Item("HO_ATTEMPTS");
    ASSERT_NE(mapped->Field(), nullptr);
    EXPECT_EQ(mapped->Field()->Field_Id(), 28);
    EXPECT_FALSE(mapped->Is_Key());
    EXPECT_EQ(mapped->Column_Type(), "I");
    EXPECT_EQ(mapped->ColPosition(), withEditorPosition() ? 3 : 0);
    // Nulls of the outer joins read as zero and empty.
    const auto plain = columns.Item("COMMENT");
    EXPECT_EQ(plain->Field(), nullptr);
    EXPECT_EQ(plain->PK_Id() + plain->KeyFld_Id() + plain->Key_Ordinal() + plain->KeyEntity_Id(),
              0);
    EXPECT_EQ(plain->KeyFld_Name() + plain->KeyEntity() + plain->KeyEntity_Label(), QString());
    EXPECT_FALSE(plain->IsTimeStamp());
}

TEST_P(ColumnSaveRoundTripTest, NewDocumentIsReadBackAsSaved) {
    const qint32 docId = newDocument("Switch Feed");
    CDataSourcesColumns columns;
    columns.setEntity(dictionary->addEntity(7, "Cell", "Cell"));
    addColumn(columns, "Time Stamp", "Date", 1, 1)->setIsTimeStamp(true);
    auto key = addColumn(columns, "CELL_NAME", "String", 3, 2);
    key->setKeyFld_Id(1);
    key->setKey_Ordinal(1);
    auto counted = addColumn(columns, "O'Brien Count", "ENUM", 2, 3);
    auto field = std::make_shared<FakeField>(0, "OBrien_Count");
    field->description = "Counted by O'Brien";
    field->heading1 = "O'Brien";
    field->technologyMask = 5;
    field->aggregationPairId = 1;
    field->dataType = "I";
    counted->setField(field);
    {
        Studio::TransactionScope transaction(*db);
        ColumnSave::InsertNewColumns(docId, columns);
        ColumnSave::CreateNewFields(docId, columns);
        ColumnSave::InsertNewKeys(docId, columns);
        transaction.Commit();
    }

    const qint32 fieldId = field->Field_Id();
    EXPECT_GE(fieldId, 1001);
    ASSERT_EQ(dictionary->registered.size(), 1);
    const QString stamp = "Time Stamp|0|0|";
    const QString keyed = QString("CELL_NAME|0|%1|Cell_Name").arg(key->PK_Id());
    const QString mapped = QString("O'Brien Count|%1|0|").arg(fieldId);
    EXPECT_EQ(columnRows(docId), withEditorPosition() ? QStringList({stamp, keyed, mapped})
                                                      : QStringList({stamp, mapped, keyed}));
}

TEST_P(ColumnSaveRoundTripTest, EditedDocumentSavesMovesKeysAndDeletions) {
    dictionary->addField(28, "HO_Attempts", 7);
    CDataSourcesColumns columns;
    columns.LoadColumns(1);
    // CELL and COMMENT swap record positions: only the negative step lets them pass each other.
    auto cell = columns.Item("CELL");
    cell->setPosition(4);
    cell->setKey_Ordinal(2);
    cell->setKeyDirty(true);
    auto comment = columns.Item("COMMENT");
    comment->setPosition(2);
    comment->setDirty(true);
    columns.Item("HO_ATTEMPTS")->setColumnDeleted(true);
    addColumn(columns, "NEW_COL", "Float", 5, 4);
    {
        Studio::TransactionScope transaction(*db);
        ColumnSave::SaveColumns(columns);
        transaction.Commit();
    }

    EXPECT_EQ(count("eds_column", "col_name = 'CELL' AND col_position = 4"), 1);
    EXPECT_EQ(count("eds_column", "col_name = 'COMMENT' AND col_position = 2"), 1);
    EXPECT_EQ(count("eds_primarykey", "col_id = 2 AND ordinal = 2"), 1);
    EXPECT_GT(columns.Item("NEW_COL")->Column_Id(), 100);

    // HO_ATTEMPTS went by the delete procedure, whose effects the procedure tests check.
    QStringList names;
    for (const QString& row : columnRows(1))
        names << row.section('|', 0, 0);
    names.sort();
    EXPECT_EQ(names, QStringList({"CELL", "COMMENT", "NEW_COL", "Time Stamp"}));
}

} // namespace Orvane::Testing
