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

const QString NameRule = "A Field name must have at least 1 but no more than 30 characters\r\n"
                         "and first character must begin with alphabet or _ and subsequent \r\n"
                         "character can be alphanumeric, % or _ only.";

class FieldEditorTest : public FakeHostTest {
protected:
    FieldEditorTest() { entity = dictionary->addEntity(5, "CELL", "Cell"); }

    void open(const std::shared_ptr<IField>& field, const QString& dataType = "Float") {
        dialog.InitializeForNew(entity, dataType, field);
        showActive(dialog);
    }

    QLineEdit* box(const QString& name) { return child<QLineEdit>(dialog, name); }
    QComboBox* list(const char* name) { return child<QComboBox>(dialog, name); }
    QLabel* label(const char* name) { return child<QLabel>(dialog, name); }
    void press(const char* name) {
        QTest::mouseClick(child<QPushButton>(dialog, name), Qt::LeftButton);
    }
    FakeTechnologies& tech() { return *widgets->lastTechnologies; }

    // Types over the box's text; characters beyond ASCII arrive as from an input method.
    static void retype(QLineEdit* box, const QString& text) {
        box->selectAll();
        for (const QChar c : text)
            QTest::sendKeyEvent(QTest::Click, box, Qt::Key_unknown, QString(c), Qt::NoModifier);
    }

    // OK is refused with this message under the dialog's caption, and the focus on the control.
    void expectRefused(const QString& message, QWidget* focus) {
        app->msgBoxes.clear();
        press("cmdOk");
        EXPECT_EQ(boxes(*app), QStringList{"Critical " + dialog.windowTitle() + ": " + message});
        EXPECT_EQ(QApplication::focusWidget(), focus);
        EXPECT_EQ(std::tuple(dialog.isVisible(), dialog.Ok()), std::tuple(true, false));
    }

    std::shared_ptr<FakeEntity> entity;
    std::shared_ptr<FakeField> stored = [] {
        auto field = std::make_shared<FakeField>(12, "Volume");
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
    fFieldInfo dialog;
};

// Without the edit permission only the name, the captions and the buttons that edit nothing stay
// enabled.
TEST_F(FieldEditorTest, ExistingFieldFillsTheFormFromTheFieldObject) {
    dictionary->extraColumns = {{"Vendor", true}, {"Legacy", false}, {"Region", true}};
    app->editPermission = false;
    open(stored);
    for (const char* name : {"txtName", "lblDescription", "cmdCancel", "cmdHelp"})
        EXPECT_TRUE(child(dialog, name)->isEnabled()) << name;
    for (const char* name : {"txtDescription", "cboTimeAggregator", "cmdOk"})
        EXPECT_FALSE(child(dialog, name)->isEnabled()) << name;
    // The caption, the type, the aggregators, the technologies and the unmodified state are
    // checked where the grid opens the editor and where an edited field is saved.
    EXPECT_EQ(QStringList({box("txtHeadingRow2")->text(), label("lblExt(2)")->text(),
                           box("txtExt(1)")->text()}),
              QStringList({"kB", "Region:", "Acme"}));
    // The pairs shown count from 1.
    EXPECT_EQ(std::tuple(box("txtExt(0)")->isHidden(),
                         dialog.findChild<QLineEdit*>("txtExt(3)") == nullptr),
              std::tuple(true, true));
    const QFont font = box("txtStyle")->font();
    EXPECT_EQ(std::tuple(font.bold(), font.underline(), font.italic()),
              std::tuple(true, true, false));
    EXPECT_EQ(box("txtStyle")->palette().color(QPalette::Text), QColor(255, 0, 0));
}

// The checks run in order: name rule, technologies, a name taken by another field of the entity
// (trimmed, without regard to case), then the aggregator pair. Nothing is saved.
TEST_F(FieldEditorTest, OkChecksNameTechnologiesDuplicatesAndAggregatorsInThatOrder) {
    // The name rule takes ASCII names up to the maximum.
    EXPECT_TRUE(fFieldInfo::IsValidFieldName(QString(30, 'a'), 30));
    EXPECT_FALSE(fFieldInfo::IsValidFieldName(QString(31, 'a'), 30));
    for (const char* name : {"_a%1", "Abc_9", "_"})
        EXPECT_TRUE(fFieldInfo::IsValidFieldName(QString::fromUtf8(name), 30)) << name;
    for (const char* name : {"", "1abc", "a-b", "a b", "%a", "caf\u00e9", "a\u0661"})
        EXPECT_FALSE(fFieldInfo::IsValidFieldName(QString::fromUtf8(name), 30)) << name;

    query->Answer("'VOLUME2'", {{{"field_id", 44}}});
    dictionary->pairs = {{{"Sum", "Sum"}, 1}};
    open(stored); // Average / Sum
    tech().check(0);
    retype(box("txtName"), "caf\u00e9");
    expectRefused(NameRule, box("txtName"));
    retype(box("txtName"), "  volume2 ");
    expectRefused("A Field must be associated with at least one technology type.\r\n"
                  "Please select one or more technology types for this Field. ",
                  &tech());
    EXPECT_TRUE(query->log.isEmpty());

    tech().check(3);
    expectRefused("A Field with this name already exists. \r\nPlease select another name",
                  box("txtName"));
    EXPECT_EQ(query->log,
              QStringList{"OPEN SELECT field_id FROM QVD_DICT_FIELD WHERE entity_id = 5 "
                          "AND UPPER(field_name) = 'VOLUME2' AND field_id <> 12"});

    retype(box("txtName"), QString(31, 'n')); // the box keeps 30: a valid name
    expectRefused("Field's time aggregation and element aggregation is not a valid choice.\r\n"
                  "Please check your aggregation selection and try again. ",
                  list("cboTimeAggregator"));
    EXPECT_TRUE(stored->saves.isEmpty());

    // A failing name check is reported and restores the pointer.
    query->FailOn("QVD_DICT_FIELD", "ORA-03113");
    expectRefused("ORA-03113", box("txtName"));
    EXPECT_EQ(app->pointer, DefaultPointer);
}

TEST_F(FieldEditorTest, ANewFieldRegistersShowsItsTypeAndIsSavedThroughANewFieldObject) {
    dictionary->extraColumns = {{"Vendor", true}, {"Legacy", false}, {"Region", true}};
    dictionary->pairs = {{{"Average", "Maximum"}, 31}};
    app->ownerId = 77;
    open(nullptr);
    EXPECT_EQ(QStringList({dialog.IAppForm_Name(), list("cboDataType")->currentText(),
                           list("cboTimeAggregator")->currentText()}),
              QStringList({"Create New Data Source Field For CELL", "Float", "Sum"}));
    EXPECT_EQ(std::tuple(list("cboDataType")->isEnabled(), dialog.IAppForm_IsLoadOk()),
              std::tuple(false, true));
    EXPECT_EQ(std::tuple(tech().initializations, dialog.Modified()), std::tuple(1, false));
    press("cmdHelp");
    EXPECT_EQ(app->helpShown, QStringList{"fFieldInfo"});
    tech().check(3);
    EXPECT_TRUE(dialog.Modified());
    {
        fFieldInfo other;
        other.InitializeForNew(entity, "Date", nullptr);
        EXPECT_EQ(child<QComboBox>(other, "cboDataType")->currentText(), "Integer");
        EXPECT_EQ(app->registeredForms, 2);
    }
    EXPECT_EQ(app->registeredForms, 1);
    QTest::keyClicks(box("txtDescription"), " Dropped calls ");
    QTest::keyClicks(box("txtHeadingRow1"), "Drops");
    QTest::keyClicks(box("txtExt(2)"), "North");
    list("cboTimeAggregator")->setCurrentText("Average");
    list("cboElementAggregator")->setCurrentText("Maximum");
    const QDateTime before = QDateTime::currentDateTime();
    retype(box("txtName"), " Drops_1 ");
    press("cmdOk");

    ASSERT_EQ(std::tuple(dialog.Ok(), dialog.result()), std::tuple(true, QDialog::Accepted));
    const auto& field = static_cast<FakeField&>(*dialog.Field());
    ASSERT_EQ(field.saves.size(), 1);
    const FieldSaveRequest& r = field.saves.at(0);
    EXPECT_EQ(QList<qint32>({r.fieldId, r.entityId, r.technologyMask, r.reserved,
                             r.aggregationPairId, r.ownerId, r.option}),
              QList<qint32>({0, 5, 3, -1, 31, 77, 0}));
    EXPECT_EQ(
        QStringList({r.name, r.appGroup, r.kind, r.dataTypeCode, r.heading1, r.heading2,
                     r.description, r.note1, r.note2}),
        QStringList({"Drops_1", "Traffic", "X", "F", "Drops", "", " Dropped calls ", "", ""}));
    EXPECT_TRUE(before <= r.savedAt && r.savedAt <= QDateTime::currentDateTime())
        << r.savedAt.toString(Qt::ISODateWithMs).toStdString();
    using Extra = std::pair<QString, QString>;
    EXPECT_EQ(r.extraColumns, QList<Extra>({{"Vendor", ""}, {"Legacy", ""}, {"Region", "North"}}));
}

TEST_F(FieldEditorTest, AnUnchangedFieldClosesUnsavedAnEditedOneSavesUnderItsId) {
    dictionary->extraColumns = {{"Vendor", true}};
    open(stored);
    press("cmdOk"); // unchanged: closes without saving
    EXPECT_EQ(std::tuple(dialog.isVisible(), dialog.Ok()), std::tuple(false, false));
    EXPECT_EQ(std::tuple(stored->saves.size(), query->log), std::tuple(0, QStringList()));
    dialog.show();
    QTest::keyClicks(box("txtExt(1)"), "x");
    EXPECT_TRUE(dialog.Modified());
    press("cmdCancel");
    EXPECT_FALSE(dialog.Ok());

    open(stored);
    press("cmdStyle"); // the chooser is cancelled
    EXPECT_FALSE(dialog.Modified());
    dictionary->styleChosen = true;
    dictionary->chosenStyle = 2;
    dictionary->chosenStyleColour = 0xFF0000;
    QTest::mouseDClick(box("txtStyle"), Qt::LeftButton);
    EXPECT_EQ(std::tuple(dialog.Modified(), box("txtStyle")->font().italic()),
              std::tuple(true, true));
    press("cmdOk");

    ASSERT_EQ(std::tuple(dialog.Ok(), dialog.Field()), std::tuple(true, stored));
    ASSERT_EQ(stored->saves.size(), 1);
    const FieldSaveRequest& r = stored->saves.at(0);
    EXPECT_EQ(QList<qint32>({r.fieldId, r.technologyMask, r.style, r.styleColour}),
              QList<qint32>({12, 5, 2, 0xFF0000}));
    EXPECT_EQ(r.dataTypeCode, "S");
}

TEST_F(FieldEditorTest, SaveFailuresKeepTheDialogOpen) {
    stored->failSave = true;
    stored->error = {2, true, "unique constraint"};
    open(stored);
    QTest::keyClicks(box("txtDescription"), "!");
    press("cmdOk");
    EXPECT_EQ(QApplication::focusWidget(), box("txtName"));
    stored->error = {2, false, "ORA-00001: unique constraint"};
    press("cmdOk");

    EXPECT_EQ(boxes(*app),
              QStringList({"Critical Creating new EDS field: A field with the name you "
                           "specified already exists. \r\nPlease specify a different "
                           "name.",
                           "Critical Creating new EDS field: Unable to save New "
                           "Field.\r\nORA-00001: unique constraint"}));
    EXPECT_EQ(std::tuple(dialog.isVisible(), dialog.Ok()), std::tuple(true, false));
}

// Without element aggregation the one list is the aggregator.
TEST_F(FieldEditorTest, PickingAnInvalidPairSetsTheOtherListToTheSameText) {
    dictionary->pairs = {{{"Sum", "Sum"}, 1}, {{"Sum", "Maximum"}, 2}, {{"Average", "Average"}, 3}};
    open(nullptr); // Sum / Sum
    list("cboElementAggregator")->setFocus();
    QTest::keyClick(list("cboElementAggregator"), Qt::Key_End); // Maximum: a valid pair
    EXPECT_EQ(list("cboTimeAggregator")->currentText(), "Sum");
    list("cboTimeAggregator")->setFocus();
    QTest::keyClick(list("cboTimeAggregator"), Qt::Key_Down); // Average / Maximum: not valid
    EXPECT_EQ(list("cboElementAggregator")->currentText(), "Average");
    EXPECT_FALSE(dialog.Modified());

    list("cboTimeAggregator")->showPopup();
    list("cboTimeAggregator")->hidePopup();
    EXPECT_TRUE(dialog.Modified());

    dictionary->elementAggregation = false;
    dictionary->pairs = {{{"Average", ""}, 9}};
    open(stored);
    EXPECT_EQ(label("lblTimeAggregator")->text(), "Aggrega&tor:");
    EXPECT_EQ(std::tuple(list("cboElementAggregator")->isVisible(),
                         label("lblElementAggregator")->isVisible()),
              std::tuple(false, false));
    retype(box("txtHeadingRow1"), "V");
    press("cmdOk");
    ASSERT_TRUE(dialog.Ok());
    EXPECT_EQ(stored->saves.at(0).aggregationPairId, 9);
}

} // namespace
} // namespace Orvane::Testing
