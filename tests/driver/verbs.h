#pragma once

#include "Call.h"

#include <QCoroTask>

namespace folvane::driver {

/// Carries out one request and puts what it finds into the call's answer. Throws BadRequest.
using Verb = QCoro::Task<> (*)(CallPtr);

/// Null when there is no such verb.
Verb verbNamed(const QString& name);

// openingVerbs.cpp
QCoro::Task<> openFiles(CallPtr call);
QCoro::Task<> insertFiles(CallPtr call);

// pageVerbs.cpp
QCoro::Task<> selectPages(CallPtr call);
QCoro::Task<> turnPages(CallPtr call);
QCoro::Task<> deletePages(CallPtr call);
QCoro::Task<> movePages(CallPtr call);
QCoro::Task<> dropPages(CallPtr call);

// savingVerbs.cpp
QCoro::Task<> saveAs(CallPtr call);
QCoro::Task<> extract(CallPtr call);

// compressVerbs.cpp
QCoro::Task<> measure(CallPtr call);
QCoro::Task<> compress(CallPtr call);

// mergeVerbs.cpp
QCoro::Task<> addToMerge(CallPtr call);
QCoro::Task<> moveInMerge(CallPtr call);
QCoro::Task<> removeFromMerge(CallPtr call);
QCoro::Task<> clearMerge(CallPtr call);
QCoro::Task<> mergeFiles(CallPtr call);

// toolVerbs.cpp
QCoro::Task<> splitFile(CallPtr call);
QCoro::Task<> saveWithPassword(CallPtr call);
QCoro::Task<> exportPages(CallPtr call);

// closingVerbs.cpp
QCoro::Task<> requestClose(CallPtr call);
QCoro::Task<> closeFile(CallPtr call);
QCoro::Task<> quit(CallPtr call);

// stateVerb.cpp
QCoro::Task<> tellState(CallPtr call);

// imageVerb.cpp
QCoro::Task<> drawImage(CallPtr call);

// rangeVerbs.cpp
QCoro::Task<> parseRanges(CallPtr call);
QCoro::Task<> describePages(CallPtr call);

// processVerbs.cpp
QCoro::Task<> waitForJob(CallPtr call);
QCoro::Task<> cancelJob(CallPtr call);
QCoro::Task<> tellMemory(CallPtr call);

} // namespace folvane::driver
