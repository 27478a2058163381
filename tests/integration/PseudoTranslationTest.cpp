#include "orvane/columns/XDataSourcesColumn.h"
#include "orvane/host/XTemplate.h"
#include "studio/app/ConnectionDialog.h"
#include "studio/app/DocumentWindow.h"
#include "studio/app/HelpBrowser.h"
#include "studio/app/MainWindow.h"
#include "studio/dictionary/FieldStyleDialog.h"
#include "tests/integration/StudioDictionaryTest.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QToolBar>
#include <QToolButton>
#include <QTranslator>

namespace Orvane::Testing {
namespace {

// The caption a control shows; none for technology names, extra columns (both from the
// database) and Qt's standard buttons.
QString caption(QWidget* w) {
    const QString name = w->objectName();
    auto* box = qobject_cast<QDialogButtonBox*>(w->parentWidget());
    auto* button = qobject_cast<QAbstractButton*>(w);
    if ((box && button && box->standardButton(button)) ||
        w->parentWidget()->objectName() == "xTech" ||
        (name.startsWith("lblExt(") && name != "lblExt(0)"))
        return QString();
    if (auto* label = qobject_cast<QLabel*>(w))
        return label->text();
    if (auto* tool = qobject_cast<QToolButton*>(w))
        return tool->toolButtonStyle() == Qt::ToolButtonIconOnly ? tool->toolTip() : tool->text();
    if (auto* frame = qobject_cast<QGroupBox*>(w))
        return frame->title();
    return button ? button->text() : QString();
}

// The window's visible captions (title, labels, buttons, frames, headers, menus) that lack the
// pseudo-translation's mark; header sections that are numbers are the grid's own.
QStringList untranslated(QWidget& window) {
    QStringList texts{window.windowTitle()};
    for (QWidget* w : window.findChildren<QWidget*>()) {
        if (!w->isVisibleTo(&window))
            continue;
        texts << caption(w);
        if (auto* header = qobject_cast<QHeaderView*>(w)) {
            for (int i = 0; i < header->count(); ++i)
                texts << header->model()->headerData(i, header->orientation()).toString();
        }
    }
    for (QMenu* menu : window.findChildren<QMenu*>()) {
        texts << menu->title();
        for (QAction* action : menu->actions())
            texts << action->text();
    }
    QStringList missed;
    for (const QString& text : texts) {
        const QString shown = text.trimmed();
        bool number = false;
        shown.toInt(&number);
        if (!number && !shown.isEmpty() && shown != "..." && !shown.startsWith(QStringLiteral("¤")))
            missed << window.objectName() + ": " + text;
    }
    return missed;
}

// The Studio and the library's windows under a pseudo-translation that marks every text.
class PseudoTranslationTest : public StudioDictionaryTest {
protected:
    void SetUp() override {
        ASSERT_TRUE(translator.load(QStringLiteral(ORVANE_PSEUDO_QM)));
        QCoreApplication::installTranslator(&translator);
        StudioDictionaryTest::SetUp();
        // Each dialog is checked; the tree picks the Cell entity, the others are cancelled.
        app->modalHandlers = {[this](QDialog& dialog) {
            missed << untranslated(dialog);
            if (auto* tree = dialog.findChild<XTemplate*>("tpl")) {
                tree->SelectItem(7);
                dialog.findChild<QPushButton*>("cmdButton(1)")->click();
            } else {
                dialog.findChild<QPushButton*>("cmdCancel")->click();
            }
            return dialog.result();
        }};
    }

    void TearDown() override {
        StudioDictionaryTest::TearDown();
        QCoreApplication::removeTranslator(&translator);
    }

    QTranslator translator;
    QStringList missed;
};

TEST_P(PseudoTranslationTest, EveryWindowShowsOnlyTranslatedTexts) {
    Studio::MainWindow studio(db);
    studio.show();
    Studio::ConnectionDialog connection(QString(), QStringLiteral("¤reason"));
    Studio::FieldStyleDialog style;
    Studio::HelpBrowser help;
    for (QWidget* window : std::initializer_list<QWidget*>{&studio, &connection, &style, &help})
        missed << untranslated(*window);

    for (QAction* newDocument : {studio.actNewAscii, studio.actNewOdbc}) {
        newDocument->trigger();
        ASSERT_TRUE(studio.CurrentDocument());
        missed << untranslated(studio);
        app->inputAnswers.push_back(QStringLiteral("C1"));
        auto* toolbar = studio.CurrentDocument()->columnEditor->findChild<QToolBar*>("tbColumns");
        for (const char* command : {"Add", "Field", "Key"})
            toolbar->findChild<QAction*>(command)->trigger();
    }
    EXPECT_EQ(app->modalShown.join(' '), "FSelectEntityTree fFieldInfo frmKeySelector "
                                         "FSelectEntityTree fFieldInfo frmKeySelector");
    missed.removeDuplicates();
    EXPECT_TRUE(missed.isEmpty()) << missed.join('\n').toStdString();
}

INSTANTIATE_TEST_SUITE_P(SQLite, PseudoTranslationTest, SqliteOnly(), targetName);

} // namespace
} // namespace Orvane::Testing
