#include "orvane/columns/XDataSourcesColumn.h"
#include "orvane/dialogs/FSelectEntityTree.h"
#include "orvane/dialogs/fFieldInfo.h"
#include "orvane/dialogs/frmKeySelector.h"
#include "orvane/editors/XDataSourcesGen.h"
#include "orvane/editors/XDataSourcesODBC.h"
#include "orvane/host/HostRegistry.h"
#include "tests/support/FakeHost.h"
#include "tests/widgets/ChildControl.h"

#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QMetaProperty>
#include <QPluginLoader>
#include <QTableView>
#include <QTest>
#include <QVBoxLayout>
#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>

#include <functional>

namespace Orvane::Testing {
namespace {

class ControlGeometryTest : public FakeHostTest {
protected:
    ControlGeometryTest() {
        query->Answer("qv_frequency", {{{"frequency_id", 15}, {"Description", "15 Minutes"}}});
        dictionary->extraColumns = {{"Vendor", true}, {"Region", true}};
        entity = dictionary->addEntity(5, "CELL", "Cell");
    }

    // The editor on top of a stretching table, as a document window holds it.
    static std::unique_ptr<QWidget> documentWindow(QWidget* editor, QSize size) {
        auto window = std::make_unique<QWidget>();
        auto* page = new QVBoxLayout(window.get());
        page->addWidget(editor);
        page->addWidget(new QTableView, 1);
        window->resize(size);
        return window;
    }

    template <typename Editor> static Editor* initialized(Editor* editor) {
        editor->InitializeDefaults();
        return editor;
    }

    static QRect placeIn(const QWidget& window, const QWidget& control) {
        return {control.mapTo(&window, QPoint(0, 0)), control.size()};
    }

    // Every control but a caption or a frame, unless hidden on purpose, is shown, at least its
    // minimum height, inside whatever holds it and clear of the others; a mnemonic has a control
    // to go to.
    static void expectEveryInputShown(QWidget& window) {
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
        QList<QWidget*> inputs =
            window.findChildren<QWidget*>(QRegularExpression("^(txt|cbo|ck|cmd|ud|tpl|xTech)"));
        inputs.removeIf([](const QWidget* control) { return control->isHidden(); });
        ASSERT_GE(inputs.size(), 2);
        for (const QWidget* input : inputs) {
            const std::string name = input->objectName().toStdString();
            const QRect place = placeIn(window, *input);
            EXPECT_TRUE(input->isVisible()) << name;
            EXPECT_GE(place.height(), input->minimumSizeHint().height()) << name;
            for (const QWidget* holder = input->parentWidget(); holder != &window;
                 holder = holder->parentWidget())
                EXPECT_TRUE(placeIn(window, *holder).contains(place)) << name << " clipped";
            EXPECT_TRUE(window.rect().contains(place)) << name;
            for (const QWidget* other : inputs) {
                EXPECT_TRUE(other == input || !place.intersects(placeIn(window, *other)))
                    << name << " overlaps " << other->objectName().toStdString();
            }
        }
        for (const QLabel* label : window.findChildren<QLabel*>()) {
            EXPECT_TRUE(!label->text().contains(QLatin1Char('&')) || label->buddy())
                << label->objectName().toStdString();
        }
    }

    // The object names the focus visits, pressing Tab from the first control.
    static QString tabOrder(QWidget& window, const QString& first, int count) {
        showActive(window);
        child(window, first)->setFocus();
        QStringList visited{first};
        while (visited.size() < count) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            visited << QApplication::focusWidget()->objectName();
        }
        return visited.join(QLatin1Char(' '));
    }

    std::shared_ptr<FakeEntity> entity;
};

TEST_F(ControlGeometryTest, EveryInputShowsInADocumentWindowAndInEachDialog) {
    const struct {
        std::function<SourceSettingsEditor*()> create;
        QString tabs;
    } editors[] = {
        {[] { return initialized(new XDataSourcesGen); },
         "txtDescription txtFile cboDelimeter ckTimeSeries cboFrequency"},
        {[] { return initialized(new XDataSourcesODBC); },
         "txtDB_Server txtDB_Database txtDB_Table txtDB_UserId txtDB_Password ckTimeSeries "
         "cboFrequency"},
    };
    for (const auto& editor : editors) {
        for (const QSize size : {QSize(900, 650), QSize(1600, 1000)}) {
            SourceSettingsEditor* control = editor.create();
            SCOPED_TRACE(control->objectName().toStdString() + " at " +
                         std::to_string(size.width()));
            auto window = documentWindow(control, size);
            expectEveryInputShown(*window);
            EXPECT_EQ(tabOrder(*window, editor.tabs.section(' ', 0, 0), editor.tabs.count(' ') + 1),
                      editor.tabs);
        }
    }

    FSelectEntityTree entityTree;
    entityTree.Initialize("Select Entity for this Data Source", 2, "System", 0);
    FSelectEntityTree keyTree;
    keyTree.Initialize("Select Key Field", 0, "CELL", 0);
    fFieldInfo fieldInfo;
    fieldInfo.InitializeForNew(entity, "Float", nullptr);
    frmKeySelector keySelector;
    keySelector.Initialize(2, 0);
    for (QDialog* dialog :
         std::initializer_list<QDialog*>{&entityTree, &keyTree, &fieldInfo, &keySelector}) {
        SCOPED_TRACE(dialog->windowTitle().toStdString());
        expectEveryInputShown(*dialog);
        dialog->hide();
    }
}

// Each public control made before a host is installed opens, says why it cannot act, and keeps
// an input that would reach the host disabled; clicking it does nothing.
TEST(NoHostTest, EveryControlShowsThatItHasNoHost) {
    HostRegistry::Uninstall();
    const std::pair<std::function<QWidget*()>, const char*> cases[] = {
        {[] { return new XDataSourcesGen; }, "ckTimeSeries"},
        {[] { return new XDataSourcesODBC; }, "ckTimeSeries"},
        {[] { return new XDataSourcesColumn; }, "fpsColumns"},
        {[] { return new frmKeySelector; }, "cmdSelect"},
        {[] { return new FSelectEntityTree; }, "cboTypeFilter"},
        {[] { return new fFieldInfo; }, "cmdStyle"},
    };
    for (const auto& [create, input] : cases) {
        std::unique_ptr<QWidget> control(create());
        SCOPED_TRACE(control->objectName().toStdString());
        control->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(control.get()));
        EXPECT_TRUE(child<QLabel>(*control, "lblNoHost")->isVisible());
        EXPECT_FALSE(child(*control, input)->isEnabled());
        QTest::mouseClick(child(*control, input), Qt::LeftButton);
    }
}

// Each control is created through the plugin, names a header that exists, and shows Designer
// its designable properties beyond QWidget's (the password is not one).
TEST(DesignerPluginTest, OffersEachControlWithItsHeaderAndItsProperties) {
    QPluginLoader loader(QStringLiteral(ORVANE_DESIGNER_PLUGIN));
    auto* collection = qobject_cast<QDesignerCustomWidgetCollectionInterface*>(loader.instance());
    ASSERT_TRUE(collection) << loader.errorString().toStdString();
    QMap<QString, QStringList> offered;
    for (QDesignerCustomWidgetInterface* plugin : collection->customWidgets()) {
        EXPECT_TRUE(QFile::exists(QStringLiteral(ORVANE_SOURCE_DIR "/") + plugin->includeFile()));
        EXPECT_TRUE(plugin->domXml().contains("class=\"" + plugin->name() + "\""));
        const std::unique_ptr<QWidget> widget(plugin->createWidget(nullptr));
        ASSERT_EQ(QString(widget->metaObject()->className()), plugin->name());
        const QMetaObject* meta = widget->metaObject();
        for (int i = QWidget::staticMetaObject.propertyCount(); i < meta->propertyCount(); ++i) {
            if (meta->property(i).isDesignable())
                offered[plugin->name()] << meta->property(i).name();
        }
    }
    const QMap<QString, QStringList> expected = {
        {"Orvane::XDataSourcesGen",
         {"IsTimeSeries", "FreqId", "Description", "Eds_File", "Eds_Delimeter"}},
        {"Orvane::XDataSourcesODBC",
         {"IsTimeSeries", "FreqId", "Server", "Database", "Table", "UserId"}},
        {"Orvane::XDataSourcesColumn", {"AppName"}},
    };
    EXPECT_EQ(offered, expected);
}

} // namespace
} // namespace Orvane::Testing
