#pragma once

#include "engine/Engine.h"
#include "engine/EngineError.h"

#include <QByteArray>
#include <QMap>
#include <QStringList>
#include <QTemporaryDir>
#include <QUrl>

#include <gtest/gtest.h>

#include <vector>

namespace folvane {

/// An engine and a folder for the files that a test makes.
class EngineTest : public testing::Test {
protected:
    QString path(const QString& name) const { return m_folder.filePath(name); }
    /// Writes a file and gives back its URL.
    QUrl write(const QString& name, const QByteArray& bytes) const;
    /// The same, and opens it.
    QUrl opened(const QString& name, const QByteArray& bytes);
    /// Builds from pages of one source, zero-based, writes the result and gives back its path.
    QString built(const QUrl& source, const std::vector<int>& pages, int turn = 0);
    QString built(const BuildPlan& plan);
    /// What the engine shows of a page.
    QImage drawn(const QUrl& source, int page, double longSide);
    /// The same of a file that is not open yet; where it is locked, by "secret".
    QImage drawn(const QString& path, int page, double longSide = 400);

    static PageItem page(const QUrl& source, int index, int turn = 0);
    static void add(BuildPlan& plan, const QUrl& source, const std::vector<int>& pages, int turn = 0);

    Engine engine;

private:
    QTemporaryDir m_folder;
    int m_builds = 0;
};

/// A file as readable text, unpacked by qpdf.
QByteArray plainText(const QString& path);
/// What pdfimages lists: a row an image.
QStringList imagesIn(const QString& path);
/// What leads to the pages of a document, as MuPDF finds it, pages counted from 1: "link" lists "from>to", page by page;
/// "bookmark" "title@page", indented by their level, "?" for no page; "field" "name@page=value" of each widget, sorted.
QMap<QString, QStringList> outsideView(const QString& path);
/// The first page as MuPDF shows it, a pixel a point.
QImage drawnByMupdf(const QString& path);

} // namespace folvane
