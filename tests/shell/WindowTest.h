#pragma once

#include "documents/currentFile.h"
#include "support/await.h"
#include "tour/Stage.h"
#include "tour/sampleFiles.h"

#include <QApplication>
#include <QTest>

#include <gtest/gtest.h>

namespace folvane {

/// The real window, with a hand at it.
class WindowTest : public testing::Test, public Stage {
public:
    QUrl makePdf(const QString& name, int pages) const { return makeSample(path(name), pages); }
    /// Opens a document of so many pages, named like "report", and shows it.
    OpenFilePtr openPages(int pages, const QString& name = "report")
    {
        await(model.open({makePdf(name + ".pdf", pages)}));
        QCoreApplication::processEvents(); // layouts show new rows
        return currentFile(model);
    }

    void clickPage(int row, Qt::KeyboardModifiers modifiers = {}) { hand.click(pagePoint(row), modifiers); }
    template <typename Dialog>
    Dialog* shown() const
    {
        const QList<Dialog*> all = window.findChildren<Dialog*>();
        const auto found = std::ranges::find_if(all, &QWidget::isVisible);
        return found == all.end() ? nullptr : *found;
    }
    template <typename Condition>
    static bool waitFor(Condition condition)
    {
        return QTest::qWaitFor(condition, 60000);
    }
};

} // namespace folvane
