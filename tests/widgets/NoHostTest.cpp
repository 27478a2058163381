#include "orvane/columns/XDataSourcesColumn.h"
#include "orvane/dialogs/FSelectEntityTree.h"
#include "orvane/dialogs/fFieldInfo.h"
#include "orvane/dialogs/frmKeySelector.h"
#include "orvane/editors/XDataSourcesGen.h"
#include "orvane/editors/XDataSourcesODBC.h"
#include "orvane/host/HostRegistry.h"
#include "tests/widgets/ChildControl.h"

#include <QLabel>
#include <QTest>
#include <functional>
#include <gtest/gtest.h>
#include <memory>

namespace Orvane::Testing {
namespace {

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

} // namespace
} // namespace Orvane::Testing
