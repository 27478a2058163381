#include "tests/widgets/ColumnEditorFixture.h"

#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

namespace Orvane::Testing {
namespace {

// The key and field commands, through the real key field selector and field editor that the
// fake application's modal handlers fill in. Each handler records what its dialog showed as it
// opened; the fake keeps the last handler for later shows, so a later command starts anew.
class ColumnKeyFieldTest : public ColumnEditorTest {
protected:
    ColumnKeyFieldTest() {
        columns->setEntity(dictionary->addEntity(5, QStringLiteral("CELL"), "Cell"));
        dictionary->addEntity(6, QStringLiteral("SITE"), "Site");
        siteId = dictionary->addField(20, QStringLiteral("SiteId"), 6);
        siteId->entityLabel = QStringLiteral("Site");
        dictionary->addField(44, QStringLiteral("cell_name"), 5)->entityLabel = "Cell";
    }

    // A stored document: A a key column (ordinal 1), B with a stored field, C plain.
    void openStoredDocument() {
        a = stored(*columns, "A", 11, 1);
        makeKey(*a, 1, 44);
        b = stored(*columns, "B", 12, 2);
        volume = field(12, QStringLiteral("Volume"));
        volume->technologies = QStringLiteral("1");
        b->setField(volume);
        c = stored(*columns, "C", 13, 3, QStringLiteral("F"));
        editor().InitEdit(columns);
        forgetChanges();
    }

    // The next key selector picks Site's SiteId in the entity tree when asked to, types the
    // ordinal when one is given, and presses OK.
    void keySelectorAnswers(bool chooseSite, const QString& ordinal = QString()) {
        app->modalHandlers.push_back([=, this](QDialog& dialog) {
            auto* txtOrdinal = child<QLineEdit>(dialog, "txtOrdinal");
            opened << "key " + txtOrdinal->text();
            if (chooseSite)
                child<QPushButton>(dialog, "cmdSelect")->click();
            if (!ordinal.isEmpty()) {
                txtOrdinal->selectAll();
                QTest::keyClicks(txtOrdinal, ordinal);
            }
            child<QPushButton>(dialog, "cmdOk")->click();
            return dialog.result();
        });
        if (chooseSite) {
            app->modalHandlers.push_back([this](QDialog& dialog) {
                widgets->lastTree->selectedKey = QStringLiteral("6");
                widgets->lastTree->selectedFields = {siteId};
                child<QPushButton>(dialog, "cmdButton(1)")->click();
                return dialog.result();
            });
        }
    }

    // The next field editor types the name over the old one, makes sure a technology is checked,
    // and presses OK.
    void fieldEditorNames(const QString& name) {
        app->modalHandlers.push_back([=, this](QDialog& dialog) {
            opened << dialog.windowTitle() + " | " +
                          child<QComboBox>(dialog, "cboDataType")->currentText();
            auto* txtName = child<QLineEdit>(dialog, "txtName");
            txtName->selectAll();
            QTest::keyClicks(txtName, name);
            if (widgets->lastTechnologies->TechnologyMask() == 0)
                widgets->lastTechnologies->check(3);
            child<QPushButton>(dialog, "cmdOk")->click();
            return dialog.result();
        });
    }

    // The next command's dialogs start from new handlers and a new record.
    void nextDialogs() {
        app->modalHandlers.clear();
        opened.clear();
    }

    // Every later dialog is cancelled.
    void dialogsAreCancelled() {
        app->modalHandlers.push_back([this](QDialog& dialog) {
            const auto* txtOrdinal = dialog.findChild<QLineEdit*>("txtOrdinal");
            opened << (txtOrdinal ? "key " + txtOrdinal->text() : dialog.windowTitle());
            dialog.reject();
            return dialog.result();
        });
    }

    ColumnPtr a, b, c;
    std::shared_ptr<FakeField> siteId;
    std::shared_ptr<FakeField> volume;
    QStringList opened;
};

TEST_F(ColumnKeyFieldTest, AKeyAddedToAStoredColumnIsInsertedAndAnEditedStoredOneUpdated) {
    openStoredDocument();
    click(3, 4);
    keySelectorAnswers(true);

    trigger("Key");

    EXPECT_EQ(opened, QStringList{"key 2"}) << "the next free ordinal is offered";
    EXPECT_EQ(c->KeyEntity_Id(), 6);
    EXPECT_EQ(c->KeyFld_Id(), 20);
    EXPECT_TRUE(c->KeyAdded() && c->Dirty());
    EXPECT_EQ(text(3, 4) + "|" + text(3, 5), "2|Site: SiteId") << "the selector's name alone";
    EXPECT_EQ(changeCount(), 1);
    EXPECT_TRUE(enabled("DelKey"));

    nextDialogs();
    keySelectorAnswers(false, QStringLiteral("5"));
    trigger("mnuKeysEdit");
    EXPECT_EQ(text(3, 4), "5");
    EXPECT_TRUE(c->KeyAdded()) << "still to be inserted however often it is edited";

    click(1, 5);
    nextDialogs();
    keySelectorAnswers(false, QStringLiteral("3"));
    trigger("Key");
    EXPECT_EQ(opened, QStringList{"key 1"}) << "the selector opens on the key's own ordinal";
    EXPECT_EQ(a->KeyFld_Name(), "Cell: cell_name");
    EXPECT_TRUE(a->KeyDirty());
    EXPECT_EQ(text(1, 4), "3");

    nextDialogs();
    dialogsAreCancelled();
    a->setKeyDirty(false);
    forgetChanges();
    trigger("mnuKeysEdit");
    EXPECT_EQ(changeCount(), 1) << "a cancelled edit still reports a change";
    EXPECT_FALSE(a->KeyDirty());

    // A move draws the column anew from its model; a loaded key shows its entity.
    click(1, 1);
    trigger("Right");
    EXPECT_EQ(gridRow(5), QStringList({"", "Cell: cell_name", "Site: SiteId"}));
}

// Nor does clearing a field in a new document, even one with stored IDs, mark it for the save.
TEST_F(ColumnKeyFieldTest, KeysOfUnsavedColumnsCarryNoFlagsAndADeletedOneIsWiped) {
    const ColumnPtr copied = stored(*columns, "D", 14, 1);
    copied->setField(field(12, QStringLiteral("Volume")));
    editor().InitNew(columns);
    app->inputAnswers = {"Site"};
    trigger("Add");
    const ColumnPtr site = columns->Item("Site");
    keySelectorAnswers(true);
    doubleClick(3, 5);
    EXPECT_EQ(opened, QStringList{"key 1"});
    EXPECT_FALSE(site->KeyAdded()) << "an unsaved column inserts its key with its row";
    forgetChanges();

    trigger("DelKey");

    EXPECT_FALSE(site->Is_Key() || site->KeyDeleted());
    EXPECT_EQ(text(3, 4) + text(3, 5), "");
    EXPECT_EQ(changeCount(), 0);

    click(2, 1);
    trigger("Clear");
    EXPECT_EQ(copied->Field(), nullptr);
    EXPECT_FALSE(copied->FieldDeleted());
}

TEST_F(ColumnKeyFieldTest, ANewFieldIsAddedUnderANameNotInUseAndAStoredOneMarkedOrUnmapped) {
    openStoredDocument();
    click(3, 3);
    fieldEditorNames(QStringLiteral("VOLUME"));
    fieldEditorNames(QStringLiteral("Drops"));

    trigger("Field");

    EXPECT_EQ(opened, QStringList(2, "Create New Data Source Field For CELL | Float"));
    EXPECT_EQ(boxes(*app), QStringList{"Critical CANNOT USE DUPLICATE FIELD NAMES: Field name is "
                                       "in use.\r\nPlease select a different name."});
    EXPECT_EQ(text(3, 3), "Drops");
    EXPECT_TRUE(c->FieldAdded() && c->Dirty());
    EXPECT_EQ(changeCount(), 1);
    EXPECT_EQ(rightClick(3, 3), "mnuDropDown: mnuAddField=0 mnuEditField=1 mnuDeleteField=1")
        << "a field added in this edit";
    trigger("mnuDeleteField");
    EXPECT_FALSE(c->FieldDeleted()) << "a new field had no mapping";

    click(2, 3);
    nextDialogs();
    fieldEditorNames(QStringLiteral("Volume2"));
    trigger("Field");
    EXPECT_EQ(opened, QStringList{" Update Data Source Field CELL: Volume | Integer"});
    EXPECT_EQ(b->Field(), volume);
    EXPECT_TRUE(b->FieldDirty());
    EXPECT_EQ(text(2, 3), "Volume2");
    EXPECT_EQ(changeCount(), 3);

    b->setFieldAdded(true);
    nextDialogs();
    fieldEditorNames(QStringLiteral("Volume3"));
    trigger("mnuEditField");
    EXPECT_TRUE(b->FieldAdded());
    EXPECT_FALSE(b->FieldDirty());
    EXPECT_EQ(text(2, 3), "Volume3");

    nextDialogs();
    dialogsAreCancelled();
    trigger("Field");
    EXPECT_EQ(changeCount(), 4) << "a cancelled field edit changes nothing";

    // Clearing unmaps a stored field of a stored column in a stored document.
    click(2, 1);
    trigger("Clear");
    EXPECT_EQ(b->Field(), nullptr);
    EXPECT_TRUE(b->FieldDeleted());
}

TEST_F(ColumnKeyFieldTest, DoubleClicksOnFieldAndKeyRowsOpenTheRightDialog) {
    const ColumnPtr ts = stored(*columns, "Time Stamp", 10, 4, "D");
    ts->setIsTimeStamp(true);
    openStoredDocument();
    dialogsAreCancelled();
    const auto open = [this](int column, int row) {
        const qsizetype before = opened.size();
        doubleClick(column, row);
        return opened.size() == before ? QString() : opened.last();
    };

    EXPECT_EQ(open(4, 3), "Create New Data Source Field For CELL");
    EXPECT_EQ(open(3, 3), " Update Data Source Field CELL: Volume");
    EXPECT_EQ(open(2, 3), "") << "a live key takes no field";
    EXPECT_EQ(open(2, 4), "key 1") << "the key is edited";
    EXPECT_EQ(open(4, 5), "key 2") << "a key is added with the next free ordinal";
    EXPECT_EQ(open(3, 4), "") << "a column with a field takes no key";
    EXPECT_EQ(open(1, 3) + open(1, 4) + open(4, 2), "");
}

} // namespace
} // namespace Orvane::Testing
