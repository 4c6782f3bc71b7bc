#pragma once

#include "engine/PDFEngine.h"
#include "platform/desktop/Preferences.h"
#include "platform/desktop/ScriptedPanels.h"
#include "platform/desktop/Workspace.h"
#include "shell/RootView.h"
#include "shell/pageGrid/PageGrid.h"
#include "support/ManualClock.h"

#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

namespace folvane {

/// The real window over the real model and engine; only panels, desktop, preferences and time are stand-ins.
class WindowTest : public testing::Test {
protected:
    void SetUp() override;

    QUrl makePdf(const QString& name, int pages);
    QUrl makeLocked(const QString& name, const QString& password);
    /// Opens a document of so many pages, named like "report", and shows it.
    OpenFilePtr openPages(int pages, const QString& name = QStringLiteral("report"));

    PageGrid& grid();
    QPoint pagePoint(int row);
    void clickPage(int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void key(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(&grid(), Qt::Key(key), modifiers);
    }
    /// The positions of the selected pages, from 0.
    static QList<int> selected(const OpenFilePtr& file);
    /// The ids of its pages.
    static QList<QUuid> ids(const OpenFilePtr& file);
    /// A drag of `data` that comes over the widget and is let go there; whether it was taken.
    static bool drop(QWidget* target, const QPoint& place, const QMimeData& data);

    /// The entry of the window's menus with that title; null when there is none.
    QAction* menuEntry(const QString& title) const;
    static void press(const QWidget* where, const QString& name);
    template <typename Dialog>
    Dialog* shown() const
    {
        for (Dialog* dialog : window.findChildren<Dialog*>()) {
            if (dialog->isVisible())
                return dialog;
        }
        return nullptr;
    }
    template <typename Condition>
    static bool waitFor(Condition condition)
    {
        return QTest::qWaitFor(condition, 60000);
    }

    QTemporaryDir folder;
    PDFEngine engine;
    ScriptedPanels panels;
    MemoryPreferences preferences;
    ScriptedWorkspace workspace;
    ManualClock clock;
    AppModel model{Services{engine, panels, preferences, workspace, clock}};
    RootView window{model};
};

} // namespace folvane
