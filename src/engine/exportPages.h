#pragma once

#include "engine/OpenDocuments.h"
#include "engine/PageExport.h"
#include "engine/PlanBuilder.h"
#include "records/BuildPlan.h"

#include <QByteArray>
#include <QList>

#include <stop_token>

namespace folvane {

/// Every page of the plan as the bytes of a picture file, in order: what a copy would show, without the copy, which would
/// fill the memory where it is an album of photographs. Throws EngineError or Cancelled.
QList<QByteArray> exportPages(const BuildPlan& plan, OpenDocuments& documents, PlanBuilder& builder,
                              PageExport pictures, const std::stop_token& stop);

} // namespace folvane
