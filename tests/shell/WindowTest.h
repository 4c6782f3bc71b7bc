#pragma once

#include "tour/Hand.h"
#include "tour/Stage.h"
#include "tour/sampleFiles.h"

#include <QAbstractButton>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

namespace folvane {

/// The real window, with a hand at it.
class WindowTest : public testing::Test, public Stage {
public:
    QUrl inFolder(const QString& name) const { return QUrl::fromLocalFile(folder.filePath(name)); }
    QUrl makePdf(const QString& name, int pages) const { return makeSample(folder.filePath(name), pages); }
    /// Opens a document of so many pages, named like "report", and shows it.
    OpenFilePtr openPages(int pages, const QString& name = "report");

    void clickPage(int row, Qt::KeyboardModifiers modifiers = {}) { hand.click(pagePoint(row), modifiers); }
    /// The first visible button with that name or text; null when there is none.
    QAbstractButton* button(const QString& name) const;
    /// The entry of the window's menus with that title; null when there is none.
    QAction* menuEntry(const QString& title) const;
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

    QTemporaryDir folder;
    Hand hand{window};
};

} // namespace folvane
