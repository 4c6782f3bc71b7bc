#include "engine/BookFixture.h"
#include "engine/EngineTest.h"
#include "support/madePdf.h"
#include "support/tools.h"

#include <QFile>

#include <gmock/gmock.h>

#include <filesystem>

namespace folvane {

using OpeningTest = EngineTest;

TEST_F(OpeningTest, KindIsDecidedByTheNameAlone)
{
    EXPECT_EQ(engine.open(write("a.PDF", book("A"))), OpenResult::opened(3));
    EXPECT_EQ(engine.open(write("a.png", book("A"))), OpenResult::unreadable());
    EXPECT_EQ(engine.open(write("text.pdf", "no PDF at all")), OpenResult::unreadable());
    EXPECT_EQ(engine.open(write("empty.pdf", {})), OpenResult::unreadable());
    EXPECT_EQ(engine.open(QUrl::fromLocalFile(path("missing.pdf"))), OpenResult::unreadable());
    EXPECT_EQ(engine.open(QUrl::fromLocalFile(path({}))), OpenResult::unreadable()) << "a folder";
}

TEST_F(OpeningTest, ADocumentWithoutPagesIsRefusedButHeld)
{
    const QUrl url = write("none.pdf", pdfOfPages({}));
    EXPECT_EQ(engine.open(url), OpenResult::unreadable());
    EXPECT_EQ(engine.open(url), OpenResult::opened(0));
}

TEST_F(OpeningTest, LiesOfTheCrossReferenceCostNothing)
{
    const QByteArray objects = "%PDF-1.5\n1 0 obj\n<< /Type /Catalog /Pages 2 0 R >>\nendobj\n"
                               "2 0 obj\n<< /Type /Pages /Kids [3 0 R] /Count 1 >>\nendobj\n"
                               "3 0 obj\n<< /Type /Page /MediaBox [0 0 9 9] >>\nendobj\n";
    for (const char* lie : {"/Size 2000000000", "/Size 9 /Index [0 9 99 2000000000]", "/S#69ze 2000000000",
                            "/Size 9 /DecodeParms << /Predictor 2 /Columns 2147483647 >>"}) {
        const QByteArray entries =
            QByteArray(lie) + " /Type /XRef /Root 1 0 R /W [1 2 1] /Filter /FlateDecode";
        const QByteArray reference = pdfStream(entries, qCompress(QByteArray(4000, '\1')).mid(4));
        const QUrl url = write("lie.pdf", objects + "4 0 obj\n" + reference + "\nendobj\nstartxref\n"
                                              + QByteArray::number(objects.size()) + "\n%%EOF\n");
        EXPECT_EQ(engine.open(url), OpenResult::opened(1)) << lie;
        engine.forget(url);
    }
    QFile zeros(path("zeros.pdf"));
    ASSERT_TRUE(zeros.open(QIODevice::WriteOnly) && zeros.resize(20LL << 30)); // sparse
    EXPECT_EQ(engine.open(QUrl::fromLocalFile(zeros.fileName())), OpenResult::unreadable());
}

TEST_F(OpeningTest, PageTreesThatLoopOrRepeatGiveTheirPages)
{
    EXPECT_EQ(engine.open(write(
                  "loop.pdf",
                  pdfOfObjects({"<< /Type /Catalog /Pages 2 0 R >>",
                                "<< /Type /Pages /Kids [3 0 R 2 0 R 3 0 R << /Type /Page >>] /Count 9 >>",
                                "<< /Type /Page /MediaBox [0 0 100 100] >>"}))),
              OpenResult::opened(3));
}

struct LockCase {
    const char* name;
    QStringList encryption; ///< for qpdf --encrypt
    QString right;
    QString wrong;
};

class Locks : public EngineTest, public testing::WithParamInterface<LockCase> {};

TEST_P(Locks, OpenWithTheirPasswordOnly)
{
    const LockCase& row = GetParam();
    write("plain.pdf", book("A"));
    const QString locked = path("locked.pdf");
    ASSERT_EQ(runTool("qpdf", QStringList{"--allow-weak-crypto", "--encrypt"} + row.encryption
                                  + QStringList{"--", path("plain.pdf"), locked})
                  .exitCode,
              0);
    const QUrl url = QUrl::fromLocalFile(locked);
    EXPECT_EQ(engine.open(url), OpenResult::needsPassword());
    EXPECT_EQ(engine.open(url, row.wrong), OpenResult::needsPassword());
    EXPECT_EQ(engine.open(url, row.right), OpenResult::opened(3));
    EXPECT_EQ(engine.open(url, row.wrong), OpenResult::opened(3)) << "open already";
    EXPECT_FALSE(engine.image({url, 0}, 0, 100)->image.isNull());
    EXPECT_TRUE(textOf(built(url, {0})).contains("Page 1"));
}

const LockCase locks[] = {{"Rc4Of40Bits", {"user", "owner", "40"}, "user", "other"},
                          {"Rc4Of128Bits", {"user", "owner", "128", "--use-aes=n"}, "user", "other"},
                          {"AesOf128Bits", {"user", "owner", "128", "--use-aes=y"}, "user", "User"},
                          {"AesOf256Bits", {"user", "owner", "256"}, "user", ""},
                          {"OwnerPassword", {"user", "owner", "256"}, "owner", "other"},
                          {"NonAscii", {"pässwörd€", "owner", "256"}, "pässwörd€", "password"}};

INSTANTIATE_TEST_SUITE_P(Rows, Locks, testing::ValuesIn(locks),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(OpeningTest, ACopyIsLockedByItsPasswordAndNoOther)
{
    BuildPlan plan;
    add(plan, opened("a.pdf", book("A")), {0, 1});
    plan.password = QString();
    EXPECT_TRUE(runTool("qpdf", {"--show-encryption", built(plan)}).output.contains("not encrypted"));
    for (const QString& password : {QStringLiteral("pässwörd€ 你好"), QString(127, 'x'), QString(200, 'x')}) {
        plan.password = password;
        const QString file = built(plan);
        // qpdf takes no more bytes than count, and cuts none off by itself
        const QString counted = QString::fromUtf8(password.toUtf8().left(127));
        EXPECT_EQ(faultsOf(file, {"--password=" + counted}), QByteArray()) << qPrintable(password);
        EXPECT_NE(faultsOf(file, {"--password=" + password.left(3)}), QByteArray());
        EXPECT_TRUE(
            runTool("qpdf", {"--show-encryption", "--password=" + counted, file}).output.contains("AESv3"));
        EXPECT_EQ(engine.open(QUrl::fromLocalFile(file)), OpenResult::needsPassword());
        EXPECT_EQ(engine.open(QUrl::fromLocalFile(file), password), OpenResult::opened(2));
    }
}

TEST_F(OpeningTest, AReplacedFileGoesOnButACutOneIsMissing)
{
    const QUrl replaced = opened("replaced.pdf", book("A"));
    QFile::remove(replaced.toLocalFile());
    write("replaced.pdf", "something else");
    EXPECT_TRUE(textOf(built(replaced, {0, 1, 2})).contains("Page 3"));

    const QUrl cut = opened("cut.pdf", book("A"));
    std::filesystem::resize_file(cut.toLocalFile().toStdString(), 200);
    BuildPlan plan;
    add(plan, cut, {0});
    EXPECT_THAT([&] { engine.build(plan); }, testing::Throws<EngineError>(testing::Property(
                                                 &EngineError::kind, EngineError::Kind::MissingPage)));
    EXPECT_FALSE(engine.image({cut, 0}, 0, 100).has_value());
}

TEST_F(OpeningTest, WhatIsNotHeldFallsBack)
{
    const QUrl source = opened("a.pdf", book("A"));
    EXPECT_EQ(engine.displaySize({source, 7}, 0), QSizeF(595, 842));
    EXPECT_FALSE(engine.image({source, 7}, 0, 100).has_value());
    engine.forget(source);
    EXPECT_EQ(engine.displaySize({source, 0}, 90), QSizeF(595, 842));
    BuildPlan plan;
    add(plan, source, {0});
    EXPECT_THROW(engine.build(plan), EngineError);
}

} // namespace folvane
