#include "controls/appearance.h"

#include <QApplication>

#include <gtest/gtest.h>

namespace folvane {
namespace {

// Controls are tested as the program shows them: with its style and fonts.
class WithAppearance : public testing::Environment {
public:
    void SetUp() override { applyAppearance(*qApp); }
};

const testing::Environment* const appearance = testing::AddGlobalTestEnvironment(new WithAppearance);

} // namespace
} // namespace folvane
