#include "orvane/columns/XDataSourcesColumn.h"
#include "orvane/host/XTemplate.h"
#include "studio/app/ConnectionDialog.h"
#include "studio/app/DocumentWindow.h"
#include "studio/app/HelpBrowser.h"
#include "studio/app/MainWindow.h"
#include "studio/dictionary/FieldStyleDialog.h"
#include "tests/integration/StudioDictionaryTest.h"

#include <QAbstractButton>
#include <QAction>
#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QTabWidget>
#include <QToolBar>
#include <QToolButton>
#include <QTranslator>

namespace Orvane::Testing {
namespace {

const QString Mark = QStringLiteral("¤");

bool showsData(const QWidget* widget) {
    // Technology names and the dictionary's extra columns come from the database.
    for (const QWidget* w = widget; w; w = w->parentWidget()) {
        if (w->objectName() == QLatin1String("xTech"))
            return true;
    }
    return widget->objectName().startsWith(QLatin1String("lblExt(")) &&
           widget->objectName() != QLatin1String("lblExt(0)");
}

// A standard button of a button box: Qt's own catalogues translate it.
bool qtOwnText(QAbstractButton* button) {
    auto* box = qobject_cast<QDialogButtonBox*>(button->parentWidget());
    return box && box->standardButton(button) != QDialogButtonBox::NoButton;
}

// Every visible caption of the window (its title, labels, buttons, frames, header sections,
// menus and their entries, toolbar tips) that does not carry the pseudo-translation's mark.
QStringList untranslated(QWidget& window) {
    QStringList missed;
    const auto check = [&](const QObject* owner, const QString& text) {
        const QString shown = text.trimmed();
        if (!shown.isEmpty() && shown != QLatin1String("...") && !shown.startsWith(Mark))
            missed << window.objectName() + "/" + owner->objectName() + ": " + text;
    };
    check(&window, window.windowTitle());
    for (QWidget* w : window.findChildren<QWidget*>()) {
        if (!w->isVisibleTo(&window) || showsData(w))
            continue;
        if (auto* label = qobject_cast<QLabel*>(w))
            check(w, label->text());
        else if (auto* tool = qobject_cast<QToolButton*>(w))
            check(w, tool->toolButtonStyle() == Qt::ToolButtonIconOnly ? tool->toolTip()
                                                                       : tool->text());
        else if (auto* button = qobject_cast<QAbstractButton*>(w); button && !qtOwnText(button))
            check(w, button->text());
        else if (auto* frame = qobject_cast<QGroupBox*>(w))
            check(w, frame->title());
        else if (auto* header = qobject_cast<QHeaderView*>(w); header && header->model()) {
            for (int i = 0; i < header->count(); ++i) {
                const QString text =
                    header->model()->headerData(i, header->orientation()).toString();
                bool number = false;
                text.toInt(&number);
                if (!number)
                    check(w, text);
            }
        }
    }
    for (QMenu* menu : window.findChildren<QMenu*>()) {
        check(menu, menu->title());
        for (QAction* action : menu->actions()) {
            if (!action->isSeparator())
                check(action, action->text());
        }
    }
    return missed;
}

// The Studio and every window of the library, with a pseudo-translation installed that marks
// each text a translator hands out.
class PseudoTranslationTest : public StudioDictionaryTest {
protected:
    void SetUp() override {
        ASSERT_TRUE(translator.load(QStringLiteral(ORVANE_PSEUDO_QM)));
        QCoreApplication::installTranslator(&translator);
        StudioDictionaryTest::SetUp();
        app->modalHandlers = {[this](QDialog& dialog) { return answer(dialog); }};
    }

    void TearDown() override {
        StudioDictionaryTest::TearDown();
        QCoreApplication::removeTranslator(&translator);
    }

    // Checks each dialog shown, picks the demo's Cell entity in the tree, cancels the others.
    int answer(QDialog& dialog) {
        missed << untranslated(dialog);
        const QString cancel = dialog.objectName() == QLatin1String("FSelectEntityTree")
                                   ? QStringLiteral("cmdButton(1)")
                                   : QStringLiteral("cmdCancel");
        if (cancel == QLatin1String("cmdButton(1)"))
            dialog.findChild<XTemplate*>("tpl")->SelectItem(7);
        dialog.findChild<QPushButton*>(cancel)->click();
        return dialog.result();
    }

    QTranslator translator;
    QStringList missed;
};

TEST_P(PseudoTranslationTest, EveryWindowShowsOnlyTranslatedTexts) {
    Studio::MainWindow studio(db);
    studio.show();
    missed << untranslated(studio);

    Studio::ConnectionDialog connection(QString(), Mark + "reason");
    Studio::FieldStyleDialog style;
    Studio::HelpBrowser help;
    for (QWidget* window : {static_cast<QWidget*>(&connection), static_cast<QWidget*>(&style),
                            static_cast<QWidget*>(&help)})
        missed << untranslated(*window);

    for (QAction* newDocument : {studio.actNewAscii, studio.actNewOdbc}) {
        newDocument->trigger();
        Studio::DocumentWindow* doc = studio.CurrentDocument();
        ASSERT_TRUE(doc);
        missed << untranslated(studio);
        app->inputAnswers.push_back(QStringLiteral("C1"));
        auto* toolbar = doc->columnEditor->findChild<QToolBar*>("tbColumns");
        toolbar->findChild<QAction*>("Add")->trigger();
        toolbar->findChild<QAction*>("Field")->trigger();
        toolbar->findChild<QAction*>("Key")->trigger();
    }
    EXPECT_EQ(app->modalShown, QStringList({"FSelectEntityTree", "fFieldInfo", "frmKeySelector",
                                            "FSelectEntityTree", "fFieldInfo", "frmKeySelector"}));
    missed.removeDuplicates();
    EXPECT_TRUE(missed.isEmpty()) << missed.join('\n').toStdString();
}

INSTANTIATE_TEST_SUITE_P(SQLite, PseudoTranslationTest,
                         ::testing::Values(DatabaseTarget{Studio::SqlBackend::SQLite,
                                                          Studio::SchemaForm::WithEditorPosition}),
                         targetName);

} // namespace
} // namespace Orvane::Testing
