#include "orvane/columns/XDataSourcesColumn.h"
#include "orvane/dialogs/FSelectEntityTree.h"
#include "orvane/dialogs/fFieldInfo.h"
#include "orvane/dialogs/frmKeySelector.h"
#include "orvane/editors/XDataSourcesGen.h"
#include "orvane/editors/XDataSourcesODBC.h"
#include "orvane/host/HostRegistry.h"
#include "tests/widgets/ChildControl.h"

#include <QLabel>
#include <QLineEdit>
#include <QTableView>
#include <QTest>
#include <functional>
#include <gtest/gtest.h>
#include <memory>

namespace Orvane::Testing {
namespace {

struct NoHostCase {
    const char* name;
    std::function<QWidget*()> create;
    // A control that would reach the host when used.
    const char* input;
};

// Each public control made before any host is installed opens, says why it cannot act, and
// leaves its inputs disabled; clicking one does nothing.
TEST(NoHostTest, EveryControlShowsThatItHasNoHost) {
    HostRegistry::Uninstall();
    const NoHostCase cases[] = {
        {"XDataSourcesGen", [] { return new XDataSourcesGen; }, "ckTimeSeries"},
        {"XDataSourcesODBC", [] { return new XDataSourcesODBC; }, "ckTimeSeries"},
        {"XDataSourcesColumn", [] { return new XDataSourcesColumn; }, "fpsColumns"},
        {"frmKeySelector", [] { return new frmKeySelector; }, "cmdSelect"},
        {"FSelectEntityTree", [] { return new FSelectEntityTree; }, "cboTypeFilter"},
        {"fFieldInfo", [] { return new fFieldInfo; }, "cmdStyle"},
    };
    for (const NoHostCase& c : cases) {
        SCOPED_TRACE(c.name);
        std::unique_ptr<QWidget> control(c.create());
        control->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(control.get()));
        const auto* notice = child<QLabel>(*control, "lblNoHost");
        EXPECT_TRUE(notice->isVisible());
        EXPECT_TRUE(notice->text().contains("no host"));
        auto* input = child<QWidget>(*control, c.input);
        EXPECT_FALSE(input->isEnabled());
        QTest::mouseClick(input, Qt::LeftButton);
    }
}

} // namespace
} // namespace Orvane::Testing
