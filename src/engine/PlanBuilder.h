#pragma once

#include "engine/OpenDocuments.h"
#include "pdf/Assembly.h"
#include "pdf/images/ImageCache.h"
#include "pdf/stamping/CompactStamps.h"
#include "records/BuildPlan.h"

#include <QByteArray>

#include <memory>
#include <stop_token>
#include <vector>

namespace folvane {

/// Makes new PDFs from the pages of open documents.
class PlanBuilder {
public:
    explicit PlanBuilder(OpenDocuments& documents) : m_documents(documents) {}

    /// Where the plan's pages are now. Throws EngineError when one is not there.
    std::vector<pdf::PageCopy> resolved(const BuildPlan& plan);
    /// The bytes of the PDF; a quality makes its pictures smaller, and never turns pages into pictures. Throws EngineError,
    /// Cancelled, or what the library throws.
    QByteArray build(const BuildPlan& plan, const std::stop_token& stop);
    /// Lets go of the pictures that builds with a quality keep for the next one.
    void forgetPictures() { m_images->clear(); }

private:
    OpenDocuments& m_documents;
    /// For the builds of one search, which differ in nothing but their pictures' size.
    std::shared_ptr<pdf::ImageCache> m_images = std::make_shared<pdf::ImageCache>();
    pdf::CompactStamps m_stamps;
};

} // namespace folvane
