#include "pdf/passwords.h"

#include <gmock/gmock.h>

namespace folvane::pdf {

struct PasswordCase {
    const char* name;
    QString typed;
    std::string want;
};

class Passwords : public testing::TestWithParam<PasswordCase> {};

TEST_P(Passwords, BecomeTheBytesThatCount)
{
    EXPECT_EQ(passwordForWriting(GetParam().typed), GetParam().want);
    EXPECT_THAT(passwordsForOpening(GetParam().typed), testing::Contains(GetParam().want));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, Passwords,
    testing::Values(PasswordCase{"Plain", "secret", "secret"}, PasswordCase{"Empty", "", ""},
                    PasswordCase{"LastByteThatCounts", QString(127, 'x'), std::string(127, 'x')},
                    PasswordCase{"OneTooMany", QString(128, 'x'), std::string(127, 'x')},
                    PasswordCase{"CutWithinALetter", QString(126, 'x') + QChar(0xe9),
                                 std::string(126, 'x') + "\xc3"},
                    PasswordCase{"Composed", QString("a") + QChar(0x308), "\xc3\xa4"},
                    PasswordCase{"SoftHyphenIsNothing", QString("se") + QChar(0xad) + "cret", "secret"},
                    PasswordCase{"NothingButSoftHyphen", QString(QChar(0xad)), "\xc2\xad"},
                    PasswordCase{"ForbiddenIsTakenAsTyped", QString("a\tb"), "a\tb"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(PasswordsOfLegacyFiles, AreTriedInTheirOwnEncoding)
{
    EXPECT_THAT(passwordsForOpening(QString("p") + QChar(0xe4) + "ss"), testing::Contains("p\xe4ss"));
}

} // namespace folvane::pdf
