#include "orvane/dialogs/fFieldInfo.h"
#include "tests/support/FakeHost.h"
#include "tests/widgets/ChildControl.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

namespace Orvane::Testing {
namespace {

const QString Caption = "Create New Data Source Field For CELL";
const QString UpdateCaption = " Update Data Source Field CELL: Volume";
const QString NameRule = "A Field name must have at least 1 but no more than 30 characters\r\n"
                         "and first character must begin with alphabet or _ and subsequent \r\n"
                         "character can be alphanumeric, % or _ only.";

class FieldEditorTest : public FakeHostTest {
protected:
    FieldEditorTest() { entity = dictionary->addEntity(5, "CELL", "Cell"); }

    void openNew(fFieldInfo& dialog, const QString& dataType = "Float") {
        dialog.InitializeForNew(entity, dataType, nullptr);
        showActive(dialog);
    }

    void openExisting(fFieldInfo& dialog) {
        dialog.InitializeForNew(entity, QString(), stored);
        showActive(dialog);
    }

    static void showActive(QDialog& dialog) {
        dialog.show();
        QApplication::setActiveWindow(&dialog);
        ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    }

    // Types over the box's text; characters beyond ASCII arrive as from an input method.
    static void retype(QLineEdit* box, const QString& text) {
        box->selectAll();
        for (const QChar c : text) {
            if (c.unicode() < 0x80)
                QTest::keyClicks(box, QString(c));
            else
                QTest::sendKeyEvent(QTest::Click, box, Qt::Key_unknown, QString(c), Qt::NoModifier);
        }
    }

    FakeTechnologies& tech() { return *widgets->lastTechnologies; }

    template <typename T = QLineEdit> static T* ctl(const fFieldInfo& dialog, const QString& name) {
        return child<T>(dialog, name);
    }
    static QComboBox* list(const fFieldInfo& dialog, const char* name) {
        return child<QComboBox>(dialog, name);
    }
    static void press(const fFieldInfo& dialog, const char* name) {
        QTest::mouseClick(child<QPushButton>(dialog, name), Qt::LeftButton);
    }

    QString lastPrompt() const {
        return app->msgBoxes.isEmpty() ? QString() : app->msgBoxes.last().prompt;
    }

    // OK is refused with this message under the dialog's caption, and the focus on the control.
    void expectRefused(fFieldInfo& dialog, const QString& message, QWidget* focus) {
        app->msgBoxes.clear();
        press(dialog, "cmdOk");
        ASSERT_EQ(app->msgBoxes.size(), 1);
        EXPECT_EQ(app->msgBoxes[0].prompt, message);
        EXPECT_EQ(app->msgBoxes[0].icon, MsgBoxIcon::Critical);
        EXPECT_EQ(app->msgBoxes[0].buttons, MsgBoxButtons::OKOnly);
        EXPECT_EQ(app->msgBoxes[0].title, dialog.windowTitle());
        EXPECT_EQ(QApplication::focusWidget(), focus);
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_FALSE(dialog.Ok());
    }

    std::shared_ptr<FakeEntity> entity;
    std::shared_ptr<FakeField> stored = [] {
        auto field = std::make_shared<FakeField>(12, "Volume");
        field->description = "Carried volume";
        field->heading1 = "Vol";
        field->heading2 = "kB";
        field->timeAggregator = "Average";
        field->elementAggregator = "Median"; // no longer offered
        field->dataType = "S";
        field->technologies = "5";
        field->style = 5;
        field->styleColour = 0x0000FF; // red in the host's byte order
        field->extra.insert("Vendor", "Acme");
        field->extra.insert("Legacy", "old");
        return field;
    }();
};

TEST_F(FieldEditorTest, NewFieldShowsItsCaptionsRegistersAndShowsItsHelp) {
    {
        fFieldInfo dialog;
        openNew(dialog);
        EXPECT_EQ(dialog.windowTitle(), Caption);
        EXPECT_EQ(dialog.IAppForm_Name(), Caption);
        EXPECT_EQ(list(dialog, "cboDataType")->currentText(), "Float");
        EXPECT_FALSE(list(dialog, "cboDataType")->isEnabled());
        EXPECT_EQ(list(dialog, "cboTimeAggregator")->currentText(), "Sum");
        EXPECT_EQ(ctl(dialog, "txtName")->maxLength(), 30);
        EXPECT_TRUE(dialog.IAppForm_IsLoadOk());
        EXPECT_EQ(tech().initializations, 1);
        EXPECT_FALSE(dialog.Modified());
        EXPECT_EQ(app->registeredForms, 1);
        EXPECT_EQ(dialog.IAppForm_Kind(), 16);
        press(dialog, "cmdHelp");
        EXPECT_EQ(app->helpShown, QStringList{"fFieldInfo"});

        fFieldInfo other;
        other.InitializeForNew(entity, "Date", nullptr);
        EXPECT_EQ(list(other, "cboDataType")->currentText(), "Integer");
    }
    EXPECT_EQ(app->registeredForms, 0);
}

TEST_F(FieldEditorTest, ExistingFieldFillsTheFormFromTheFieldObject) {
    dictionary->extraColumns = {{"Vendor", true}, {"Legacy", false}, {"Region", true}};
    fFieldInfo dialog;
    openExisting(dialog);

    EXPECT_EQ(dialog.windowTitle(), UpdateCaption);
    EXPECT_EQ(ctl(dialog, "txtName")->text(), "Volume");
    EXPECT_EQ(ctl(dialog, "txtHeadingRow2")->text(), "kB");
    EXPECT_EQ(list(dialog, "cboDataType")->currentText(), "String");
    EXPECT_EQ(list(dialog, "cboTimeAggregator")->currentText(), "Average");
    EXPECT_EQ(list(dialog, "cboElementAggregator")->currentText(), "Sum");
    EXPECT_EQ(tech().mask, 5);

    EXPECT_TRUE(ctl(dialog, "txtExt(0)")->isHidden()); // the pairs shown count from 1
    EXPECT_EQ(dialog.findChild<QLineEdit*>("txtExt(3)"), nullptr);
    EXPECT_EQ(ctl<QLabel>(dialog, "lblExt(1)")->text(), "Vendor:");
    EXPECT_EQ(ctl(dialog, "txtExt(1)")->text(), "Acme");
    EXPECT_EQ(ctl<QLabel>(dialog, "lblExt(2)")->text(), "Region:");
    EXPECT_EQ(ctl(dialog, "txtExt(2)")->text(), "");

    EXPECT_TRUE(ctl(dialog, "txtStyle")->font().bold());
    EXPECT_FALSE(ctl(dialog, "txtStyle")->font().italic());
    EXPECT_TRUE(ctl(dialog, "txtStyle")->font().underline());
    EXPECT_EQ(ctl(dialog, "txtStyle")->palette().color(QPalette::Text), QColor(255, 0, 0));
    EXPECT_FALSE(dialog.Modified());
}

TEST_F(FieldEditorTest, WithoutEditPermissionOnlyTheNameStaysEnabled) {
    app->editPermission = false;
    fFieldInfo dialog;
    openExisting(dialog);
    EXPECT_TRUE(ctl(dialog, "txtName")->isEnabled());
    EXPECT_TRUE(ctl<QLabel>(dialog, "lblDescription")->isEnabled());
    EXPECT_FALSE(ctl(dialog, "txtDescription")->isEnabled());
    EXPECT_FALSE(list(dialog, "cboTimeAggregator")->isEnabled());
    EXPECT_FALSE(ctl<QPushButton>(dialog, "cmdOk")->isEnabled());
    EXPECT_TRUE(ctl<QPushButton>(dialog, "cmdCancel")->isEnabled());
}

TEST_F(FieldEditorTest, NameRuleAcceptsAsciiNamesUpToTheMaximum) {
    const QString longest(30, QLatin1Char('a'));
    EXPECT_TRUE(fFieldInfo::IsValidFieldName(longest, 30));
    EXPECT_FALSE(fFieldInfo::IsValidFieldName(longest + QLatin1Char('a'), 30));
    for (const char* name : {"_a%1", "Abc_9", "x", "_"})
        EXPECT_TRUE(fFieldInfo::IsValidFieldName(QString::fromUtf8(name), 30)) << name;
    for (const char* name :
         {"", "1abc", "a-b", "a b", "%a", "caf\u00e9", "\u00c9t\u00e9", "a\u0661"})
        EXPECT_FALSE(fFieldInfo::IsValidFieldName(QString::fromUtf8(name), 30)) << name;
}

// The checks run in order: name rule, technologies, a name taken by another field of the entity
// (trimmed, without regard to case), then the aggregator pair. Nothing is saved.
TEST_F(FieldEditorTest, OkChecksNameTechnologiesDuplicatesAndAggregatorsInThatOrder) {
    query->Answer("'VOLUME2'", {{{"field_id", 44}}});
    dictionary->pairs = {{{"Sum", "Sum"}, 1}};
    fFieldInfo dialog;
    openExisting(dialog); // Average / Sum
    EXPECT_EQ(dialog.windowTitle(), UpdateCaption);
    tech().check(0);
    retype(ctl(dialog, "txtName"), "1abc");
    expectRefused(dialog, NameRule, ctl(dialog, "txtName"));
    retype(ctl(dialog, "txtName"), "caf\u00e9");
    expectRefused(dialog, NameRule, ctl(dialog, "txtName"));
    retype(ctl(dialog, "txtName"), "  volume2 ");
    expectRefused(dialog,
                  "A Field must be associated with at least one technology type.\r\n"
                  "Please select one or more technology types for this Field. ",
                  &tech());
    EXPECT_TRUE(query->log.isEmpty());

    tech().check(3);
    expectRefused(dialog, "A Field with this name already exists. \r\nPlease select another name",
                  ctl(dialog, "txtName"));
    EXPECT_EQ(query->log,
              QStringList{"OPEN SELECT field_id FROM QVD_DICT_FIELD WHERE entity_id = 5 "
                          "AND UPPER(field_name) = 'VOLUME2' AND field_id <> 12"});

    retype(ctl(dialog, "txtName"), QString(31, QLatin1Char('n'))); // the box keeps 30: a valid name
    expectRefused(dialog,
                  "Field's time aggregation and element aggregation is not a valid choice.\r\n"
                  "Please check your aggregation selection and try again. ",
                  list(dialog, "cboTimeAggregator"));
    EXPECT_EQ(ctl(dialog, "txtName")->text(), QString(30, QLatin1Char('n')));
    EXPECT_TRUE(stored->saves.isEmpty());
}

TEST_F(FieldEditorTest, NewFieldIsSavedThroughANewFieldObject) {
    dictionary->extraColumns = {{"Vendor", true}, {"Legacy", false}, {"Region", true}};
    dictionary->pairs = {{{"Average", "Maximum"}, 31}};
    app->ownerId = 77;
    fFieldInfo dialog;
    openNew(dialog);
    QTest::keyClicks(ctl(dialog, "txtDescription"), " Dropped calls ");
    QTest::keyClicks(ctl(dialog, "txtHeadingRow1"), "Drops");
    QTest::keyClicks(ctl(dialog, "txtExt(1)"), "Acme");
    QTest::keyClicks(ctl(dialog, "txtExt(2)"), "North");
    list(dialog, "cboTimeAggregator")->setCurrentText("Average");
    list(dialog, "cboElementAggregator")->setCurrentText("Maximum");
    const QDateTime before = QDateTime::currentDateTime();
    retype(ctl(dialog, "txtName"), " Drops_1 ");
    tech().check(3);
    press(dialog, "cmdOk");

    ASSERT_TRUE(dialog.Ok()) << lastPrompt().toStdString();
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    const auto& field = static_cast<FakeField&>(*dialog.Field());
    ASSERT_EQ(field.saves.size(), 1);
    const FieldSaveRequest& r = field.saves.at(0);
    EXPECT_EQ(r.fieldId, 0);
    EXPECT_EQ(r.name, "Drops_1");
    EXPECT_EQ(r.entityId, 5);
    EXPECT_EQ(r.appGroup, "Traffic");
    EXPECT_EQ(r.kind, "X");
    EXPECT_EQ(r.technologyMask, 3);
    EXPECT_EQ(r.dataTypeCode, "F");
    EXPECT_EQ(r.reserved, -1);
    EXPECT_EQ(r.heading1, "Drops");
    EXPECT_EQ(r.heading2, "");
    EXPECT_EQ(r.description, " Dropped calls ");
    EXPECT_EQ(r.aggregationPairId, 31);
    EXPECT_EQ(r.ownerId, 77);
    EXPECT_TRUE(r.note1.isEmpty() && r.note2.isEmpty());
    EXPECT_GE(r.savedAt, before);
    EXPECT_LE(r.savedAt, QDateTime::currentDateTime());
    using Extra = std::pair<QString, QString>;
    EXPECT_EQ(r.extraColumns,
              QList<Extra>({{"Vendor", "Acme"}, {"Legacy", ""}, {"Region", "North"}}));
    EXPECT_EQ(r.option, 0);
}

TEST_F(FieldEditorTest, ExistingFieldSavesUnderItsIdWithItsStyle) {
    fFieldInfo dialog;
    openExisting(dialog);
    press(dialog, "cmdStyle"); // the chooser is cancelled
    EXPECT_FALSE(dialog.Modified());
    dictionary->styleChosen = true;
    dictionary->chosenStyle = 2;
    dictionary->chosenStyleColour = 0xFF0000;
    QTest::mouseDClick(ctl(dialog, "txtStyle"), Qt::LeftButton);
    EXPECT_TRUE(dialog.Modified());
    EXPECT_TRUE(ctl(dialog, "txtStyle")->font().italic());
    EXPECT_FALSE(ctl(dialog, "txtStyle")->font().bold());
    press(dialog, "cmdOk");

    ASSERT_TRUE(dialog.Ok());
    EXPECT_EQ(dialog.Field(), stored);
    ASSERT_EQ(stored->saves.size(), 1);
    const FieldSaveRequest& r = stored->saves.at(0);
    EXPECT_EQ(r.fieldId, 12);
    EXPECT_EQ(r.name, "Volume");
    EXPECT_EQ(r.dataTypeCode, "S");
    EXPECT_EQ(r.technologyMask, 5);
    EXPECT_EQ(r.style, 2);
    EXPECT_EQ(r.styleColour, 0xFF0000);
}

TEST_F(FieldEditorTest, SaveFailuresKeepTheDialogOpen) {
    stored->failSave = true;
    stored->error = {2, true, "unique constraint"};
    fFieldInfo dialog;
    openExisting(dialog);
    QTest::keyClicks(ctl(dialog, "txtDescription"), "!");
    press(dialog, "cmdOk");

    ASSERT_EQ(app->msgBoxes.size(), 1);
    EXPECT_EQ(app->msgBoxes.at(0).prompt, "A field with the name you specified already exists. "
                                          "\r\nPlease specify a different name.");
    EXPECT_EQ(app->msgBoxes.at(0).title, "Creating new EDS field");
    EXPECT_EQ(app->msgBoxes.at(0).icon, MsgBoxIcon::Critical);
    EXPECT_EQ(QApplication::focusWidget(), ctl(dialog, "txtName"));
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_FALSE(dialog.Ok());

    stored->error = {2, false, "ORA-00001: unique constraint"};
    press(dialog, "cmdOk");
    ASSERT_EQ(app->msgBoxes.size(), 2);
    EXPECT_EQ(app->msgBoxes.at(1).prompt,
              "Unable to save New Field.\r\nORA-00001: unique constraint");
    EXPECT_EQ(app->msgBoxes.at(1).title, "Creating new EDS field");
    EXPECT_EQ(stored->saves.size(), 2);
    EXPECT_FALSE(dialog.Ok());
}

TEST_F(FieldEditorTest, PickingAnInvalidPairSetsTheOtherListToTheSameText) {
    dictionary->pairs = {{{"Sum", "Sum"}, 1}, {{"Sum", "Maximum"}, 2}, {{"Average", "Average"}, 3}};
    fFieldInfo dialog;
    openNew(dialog); // Sum / Sum

    list(dialog, "cboElementAggregator")->setFocus();
    QTest::keyClick(list(dialog, "cboElementAggregator"), Qt::Key_End); // Maximum: a valid pair
    EXPECT_EQ(list(dialog, "cboTimeAggregator")->currentText(), "Sum");

    list(dialog, "cboTimeAggregator")->setFocus();
    QTest::keyClick(list(dialog, "cboTimeAggregator"),
                    Qt::Key_Down); // Average / Maximum: not valid
    EXPECT_EQ(list(dialog, "cboElementAggregator")->currentText(), "Average");
    EXPECT_FALSE(dialog.Modified());

    list(dialog, "cboTimeAggregator")->showPopup();
    list(dialog, "cboTimeAggregator")->hidePopup();
    EXPECT_TRUE(dialog.Modified());
}

TEST_F(FieldEditorTest, EditsMarkTheFieldModifiedAndCancelLeavesItUntouched) {
    dictionary->extraColumns = {{"Vendor", true}};
    fFieldInfo checked;
    checked.InitializeForNew(entity, QString(), stored);
    tech().check(1);
    EXPECT_TRUE(checked.Modified());

    fFieldInfo dialog;
    openExisting(dialog);
    press(dialog, "cmdOk"); // unchanged: closes without saving
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_FALSE(dialog.Ok());
    showActive(dialog);
    QTest::keyClicks(ctl(dialog, "txtExt(1)"), "x");
    EXPECT_TRUE(dialog.Modified());
    retype(ctl(dialog, "txtName"), "Other");
    press(dialog, "cmdCancel");
    EXPECT_FALSE(dialog.Ok());
    EXPECT_EQ(stored->name, "Volume");
    EXPECT_TRUE(stored->saves.isEmpty());
    EXPECT_TRUE(query->log.isEmpty());
}

TEST_F(FieldEditorTest, AFailingNameCheckIsReportedAndRestoresThePointer) {
    query->FailOn("QVD_DICT_FIELD", "ORA-03113");
    fFieldInfo dialog;
    openNew(dialog);
    retype(ctl(dialog, "txtName"), "Drops");
    tech().check(1);
    expectRefused(dialog, "ORA-03113", ctl(dialog, "txtName"));
    EXPECT_EQ(app->pointer, DefaultPointer);
}

TEST_F(FieldEditorTest, SingleAggregatorWhenElementAggregationIsNotOffered) {
    dictionary->elementAggregation = false;
    dictionary->pairs = {{{"Average", ""}, 9}};
    fFieldInfo dialog;
    openExisting(dialog);
    EXPECT_EQ(ctl<QLabel>(dialog, "lblTimeAggregator")->text(), "Aggrega&tor:");
    EXPECT_FALSE(list(dialog, "cboElementAggregator")->isVisible());
    EXPECT_FALSE(ctl<QLabel>(dialog, "lblElementAggregator")->isVisible());
    retype(ctl(dialog, "txtHeadingRow1"), "V");
    press(dialog, "cmdOk");

    ASSERT_TRUE(dialog.Ok()) << lastPrompt().toStdString();
    EXPECT_EQ(stored->saves.at(0).aggregationPairId, 9);
}

} // namespace
} // namespace Orvane::Testing
