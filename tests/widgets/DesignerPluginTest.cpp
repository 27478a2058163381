#include <QFile>
#include <QMetaProperty>
#include <QPluginLoader>
#include <QWidget>
#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>
#include <gtest/gtest.h>
#include <memory>

namespace Orvane::Testing {
namespace {

// The designable properties a control shows in Designer, beyond QWidget's.
QStringList designable(const QWidget& widget) {
    QStringList names;
    const QMetaObject* meta = widget.metaObject();
    for (int i = QWidget::staticMetaObject.propertyCount(); i < meta->propertyCount(); ++i) {
        if (meta->property(i).isDesignable())
            names << meta->property(i).name();
    }
    return names;
}

TEST(DesignerPluginTest, OffersEachControlWithItsHeaderAndItsProperties) {
    QPluginLoader loader(QStringLiteral(ORVANE_DESIGNER_PLUGIN));
    auto* collection = qobject_cast<QDesignerCustomWidgetCollectionInterface*>(loader.instance());
    ASSERT_TRUE(collection) << loader.errorString().toStdString();

    const QMap<QString, QStringList> expected = {
        {"Orvane::XDataSourcesGen",
         {"IsTimeSeries", "FreqId", "Description", "Eds_File", "Eds_Delimeter"}},
        {"Orvane::XDataSourcesODBC",
         {"IsTimeSeries", "FreqId", "Server", "Database", "Table", "UserId"}},
        {"Orvane::XDataSourcesColumn", {"AppName"}},
    };
    QMap<QString, QStringList> offered;
    for (QDesignerCustomWidgetInterface* plugin : collection->customWidgets()) {
        EXPECT_TRUE(QFile::exists(QStringLiteral(ORVANE_SOURCE_DIR "/") + plugin->includeFile()))
            << plugin->includeFile().toStdString();
        EXPECT_TRUE(plugin->domXml().contains("class=\"" + plugin->name() + "\""));
        const std::unique_ptr<QWidget> widget(plugin->createWidget(nullptr));
        ASSERT_TRUE(widget);
        EXPECT_EQ(QString(widget->metaObject()->className()), plugin->name());
        offered.insert(plugin->name(), designable(*widget));
    }
    EXPECT_EQ(offered, expected);
}

} // namespace
} // namespace Orvane::Testing
