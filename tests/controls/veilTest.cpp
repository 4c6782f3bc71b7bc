#include "controls/sheets/Veil.h"

#include <QDialog>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>

namespace folvane {
namespace {

TEST(Veil, StaysUntilNothingHasToBeAnsweredAnyMore)
{
    QWidget window;
    const Veil veil(&window);
    window.show();
    auto first = std::make_unique<QDialog>(&window);
    QDialog second(&window);
    first->open();
    second.open();
    EXPECT_TRUE(QTest::qWaitFor([&] { return veil.isVisible(); }));
    first.reset();
    EXPECT_TRUE(veil.isVisible());
    second.hide();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !veil.isVisible(); }));
}

} // namespace
} // namespace folvane
