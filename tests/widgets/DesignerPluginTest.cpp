#include <QFile>
#include <QMetaProperty>
#include <QPluginLoader>
#include <QWidget>
#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>
#include <gtest/gtest.h>
#include <memory>

namespace Orvane::Testing {
namespace {

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
