#include "orvane/columns/XDataSourcesColumn.h"
#include "orvane/host/IRecordset.h"
#include "orvane/host/OrvaneError.h"
#include "orvane/model/CDataSourcesColumn.h"
#include "orvane/model/CDataSourcesColumns.h"
#include "orvane/model/ColumnSave.h"
#include "orvane/model/MSQL.h"
#include "studio/db/TransactionScope.h"
#include "tests/integration/DatabaseTest.h"

#include <QAction>
#include <QTableView>
#include <gmock/gmock.h>

namespace Orvane::Testing {

// The library's column query and its save routines against the real schema: what is saved is
// what the column query reads back, in both forms of eds_column.
class ColumnSaveRoundTripTest : public DatabaseTest {
protected:
    // One row of the column query, read as the model reads it.
    struct ColumnRow {
        QString name;
        qint32 fieldId, pkId, keyFieldId, ordinal, keyEntityId;
        QString keyFieldName, keyEntityName, keyEntityLabel;
        bool timeStamp;
    };

    QList<ColumnRow> columnRows(qint32 edsId) {
        QList<ColumnRow> rows;
        const auto rst = db->OpenRecordset(MSQL::ColumnQuery(edsId));
        const auto integer = [&](const char* name) {
            return db->ValueAsLong(rst->Value(QLatin1String(name)));
        };
        const auto text = [&](const char* name) {
            return rst->Value(QLatin1String(name)).toString();
        };
        for (; !rst->Eof(); rst->MoveNext()) {
            rows.append({text("col_name"), integer("Field_Id"), integer("pk_id"),
                         integer("pkFld_id"), integer("ordinal"), integer("pkEntity_id"),
                         text("pkFld_name"), text("pkEntity_name"), text("pkEntity_label"),
                         db->ValueAsBoolean(rst->Value(QStringLiteral("TimeStamp")))});
        }
        return rows;
    }

    QStringList namesOf(const QList<ColumnRow>& rows) {
        QStringList names;
        for (const ColumnRow& row : rows)
            names << row.name;
        return names;
    }

    qint32 newDocument(const QString& name) {
        const qint32 id = db->NextSequenceValue(QStringLiteral("sq_eds_document"));
        db->ExecuteStatement(
            QStringLiteral("INSERT INTO eds_document (id, name, eds_type, entity_id, "
                           "is_time_series, doc_type) VALUES(") +
            db->BuildValueList({id, name, QStringLiteral("A"), 7, QStringLiteral("Y"),
                                QStringLiteral("ASCII Data Source")}) +
            QStringLiteral(")"));
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
    dictionary->addField(28, QStringLiteral("HO_Attempts"), 7);
    CDataSourcesColumns columns;
    columns.LoadColumns(1);
    ASSERT_EQ(columns.Count(), 4);
    EXPECT_EQ(columns.EDS_Id(), 1);
    EXPECT_EQ(columns.TSColumn(), columns.Item(1));
    EXPECT_EQ(columns.Item(1)->Column_Name(), QStringLiteral("Time Stamp"));
    const auto key = columns.Item(QStringLiteral("CELL"));
    EXPECT_EQ(key->PK_Id(), 1);
    EXPECT_EQ(key->KeyFld_Id(), 1);
    EXPECT_EQ(key->KeyFld_Name(), QStringLiteral("Cell_Name"));
    EXPECT_EQ(key->Key_Ordinal(), 1);
    EXPECT_EQ(key->KeyEntity_Id(), 7);
    EXPECT_EQ(key->KeyEntity() + key->KeyEntity_Label(), QStringLiteral("CellCell"));
    EXPECT_EQ(key->Field(), nullptr);
    const auto mapped = columns.Item(QStringLiteral("HO_ATTEMPTS"));
    ASSERT_NE(mapped->Field(), nullptr);
    EXPECT_EQ(mapped->Field()->Field_Id(), 28);
    EXPECT_FALSE(mapped->Is_Key());
    EXPECT_EQ(mapped->Column_Type(), QStringLiteral("I"));
    EXPECT_EQ(mapped->ColPosition(), withEditorPosition() ? 3 : 0);
    // Nulls of the outer joins read as zero and empty.
    const auto plain = columns.Item(QStringLiteral("COMMENT"));
    EXPECT_EQ(plain->Field(), nullptr);
    EXPECT_EQ(plain->PK_Id() + plain->KeyFld_Id() + plain->Key_Ordinal() + plain->KeyEntity_Id(),
              0);
    EXPECT_EQ(plain->KeyFld_Name() + plain->KeyEntity() + plain->KeyEntity_Label(), QString());
    EXPECT_FALSE(plain->IsTimeStamp());
}

TEST_P(ColumnSaveRoundTripTest, NewDocumentIsReadBackAsSaved) {
    const qint32 docId = newDocument(QStringLiteral("Switch Feed"));
    CDataSourcesColumns columns;
    columns.setEntity(dictionary->addEntity(7, QStringLiteral("Cell"), QStringLiteral("Cell")));
    addColumn(columns, QStringLiteral("Time Stamp"), QStringLiteral("Date"), 1, 1)
        ->setIsTimeStamp(true);
    auto key = addColumn(columns, QStringLiteral("CELL_NAME"), QStringLiteral("String"), 3, 2);
    key->setKeyFld_Id(1);
    key->setKey_Ordinal(1);
    auto counted =
        addColumn(columns, QStringLiteral("O'Brien Count"), QStringLiteral("ENUM"), 2, 3);
    auto field = std::make_shared<FakeField>(0, QStringLiteral("OBrien_Count"));
    field->description = QStringLiteral("Counted by O'Brien");
    field->heading1 = QStringLiteral("O'Brien");
    field->technologyMask = 5;
    field->aggregationPairId = 1;
    field->dataType = QStringLiteral("I");
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
    const QList<ColumnRow> rows = columnRows(docId);
    EXPECT_EQ(namesOf(rows),
              withEditorPosition()
                  ? QStringList({QStringLiteral("Time Stamp"), QStringLiteral("CELL_NAME"),
                                 QStringLiteral("O'Brien Count")})
                  : QStringList({QStringLiteral("Time Stamp"), QStringLiteral("O'Brien Count"),
                                 QStringLiteral("CELL_NAME")}));
    for (const ColumnRow& row : rows) {
        if (row.name == QLatin1String("CELL_NAME")) {
            EXPECT_EQ(row.keyFieldName, QStringLiteral("Cell_Name"));
            EXPECT_EQ(row.pkId, key->PK_Id());
        } else if (row.name == QLatin1String("O'Brien Count")) {
            EXPECT_EQ(row.fieldId, fieldId);
            EXPECT_EQ(row.pkId, 0);
        }
    }
    const QString byId = QStringLiteral("field_id = %1").arg(fieldId);
    EXPECT_EQ(
        count(QStringLiteral("qvd_dict_name"), byId + QStringLiteral(" AND entity_id = 7 AND "
                                                                     "name = 'OBrien_Count' AND "
                                                                     "report_header = 'O''Brien'")),
        1);
    EXPECT_EQ(
        count(QStringLiteral("qvd_field_def"), byId + QStringLiteral(" AND field_group_id = 3 AND "
                                                                     "field_desc = 'Counted by "
                                                                     "O''Brien'")),
        1);
    EXPECT_EQ(count(QStringLiteral("qvd_field_tech"), byId), 2);
    EXPECT_EQ(count(QStringLiteral("eds_column"),
                    QStringLiteral("eds_id = %1 AND col_type = 'E'").arg(docId)),
              1);
}

TEST_P(ColumnSaveRoundTripTest, EditedDocumentSavesMovesKeysAndDeletions) {
    dictionary->addField(28, QStringLiteral("HO_Attempts"), 7);
    CDataSourcesColumns columns;
    columns.LoadColumns(1);
    // CELL and COMMENT swap record positions: only the negative step lets them pass each other.
    auto cell = columns.Item(QStringLiteral("CELL"));
    cell->setPosition(4);
    cell->setKey_Ordinal(2);
    cell->setKeyDirty(true);
    auto comment = columns.Item(QStringLiteral("COMMENT"));
    comment->setPosition(2);
    comment->setDirty(true);
    columns.Item(QStringLiteral("HO_ATTEMPTS"))->setColumnDeleted(true);
    addColumn(columns, QStringLiteral("NEW_COL"), QStringLiteral("Float"), 5, 4);
    {
        Studio::TransactionScope transaction(*db);
        ColumnSave::SaveColumns(columns);
        transaction.Commit();
    }

    EXPECT_EQ(count(QStringLiteral("eds_column"),
                    QStringLiteral("col_name = 'CELL' AND col_position = 4")),
              1);
    EXPECT_EQ(count(QStringLiteral("eds_column"),
                    QStringLiteral("col_name = 'COMMENT' AND col_position = 2")),
              1);
    EXPECT_EQ(count(QStringLiteral("eds_primarykey"), QStringLiteral("col_id = 2 AND ordinal = 2")),
              1);
    EXPECT_EQ(count(QStringLiteral("eds_column"), QStringLiteral("col_id = 3")), 0);
    EXPECT_EQ(count(QStringLiteral("qvd_eds_def"), QStringLiteral("col_id = 3")), 0);
    EXPECT_EQ(count(QStringLiteral("qvd_field_def"), QStringLiteral("field_id = 28")), 0);
    EXPECT_EQ(count(QStringLiteral("qvd_dict_name"), QStringLiteral("field_id = 28")), 0);
    EXPECT_GT(columns.Item(QStringLiteral("NEW_COL"))->Column_Id(), 100);

    QStringList names = namesOf(columnRows(1));
    names.sort();
    EXPECT_EQ(names, QStringList({QStringLiteral("CELL"), QStringLiteral("COMMENT"),
                                  QStringLiteral("NEW_COL"), QStringLiteral("Time Stamp")}));
}

TEST_P(ColumnSaveRoundTripTest, AClearedFieldIsGoneFromTheColumnAfterTheSave) {
    dictionary->addField(28, QStringLiteral("HO_Attempts"), 7);
    auto columns = std::make_shared<CDataSourcesColumns>();
    columns->LoadColumns(1);
    {
        // The column layout editor clears HO_ATTEMPTS, the third column, as a user would.
        XDataSourcesColumn editor;
        editor.InitEdit(columns);
        auto* grid = editor.findChild<QTableView*>(QStringLiteral("fpsColumns"));
        const QModelIndex name = grid->model()->index(0, 2);
        ASSERT_EQ(name.data().toString(), QStringLiteral("HO_ATTEMPTS"));
        emit grid->clicked(name);
        editor.findChild<QAction*>(QStringLiteral("Clear"))->trigger();
    }
    {
        Studio::TransactionScope transaction(*db);
        ColumnSave::SaveColumns(*columns);
        transaction.Commit();
    }

    CDataSourcesColumns reloaded;
    reloaded.LoadColumns(1);
    ASSERT_EQ(reloaded.Count(), 4);
    EXPECT_EQ(reloaded.Item(QStringLiteral("HO_ATTEMPTS"))->Field(), nullptr);
    EXPECT_EQ(count(QStringLiteral("qvd_eds_def"), QStringLiteral("eds_id = 1")), 0);
    // The field stays in the dictionary, and the other document keeps its own mapping.
    EXPECT_EQ(count(QStringLiteral("qvd_dict_name"), QStringLiteral("field_id = 28")), 1);
    EXPECT_EQ(count(QStringLiteral("qvd_eds_def"), QStringLiteral("eds_id = 2")), 1);
}

TEST_P(ColumnSaveRoundTripTest, AFailedSaveChangesNothing) {
    CDataSourcesColumns columns;
    columns.LoadColumns(1);
    columns.Item(QStringLiteral("COMMENT"))->setColumnDeleted(true);
    auto clash = addColumn(columns, QStringLiteral("CLASH"), QStringLiteral("String"), 1, 5);
    const qint32 before = count(QStringLiteral("eds_column"));
    {
        Studio::TransactionScope transaction(*db);
        EXPECT_THROW(ColumnSave::SaveColumns(columns), Error);
    }
    EXPECT_EQ(count(QStringLiteral("eds_column")), before);
    EXPECT_EQ(count(QStringLiteral("eds_column"), QStringLiteral("col_name = 'COMMENT'")), 1);
}

} // namespace Orvane::Testing
