#pragma once

#include "codes/reading/CodeObservation.h"

#include <QByteArray>

#include <optional>
#include <vector>

namespace folvane {

// What goes between CodeReader and the program that finds codes, over the socket that is the program's standard input.
// A request is a PictureShape, and with it the descriptor of shared memory that holds the grey pixels, a byte each. The
// answer is its length, a 32-bit number of this machine, and then as many bytes: an encoded list of observations.

/// The program lives beside the main one or in ../libexec/folvane.
constexpr const char* readCodesProgram = "folvane-read-codes";

struct PictureShape {
    quint32 width = 0;
    quint32 height = 0;
    quint32 stride = 0; ///< bytes from row to row
};

/// Larger pictures are made smaller before they are sent.
constexpr qint64 maxCodePicturePixels = qint64(64) << 20;
constexpr quint32 maxCodesAnswerBytes = 4 << 20;
constexpr quint32 maxCodesInPicture = 1000;

QByteArray encodedCodes(const std::vector<CodeObservation>& codes);

/// Nothing when the bytes are not exactly such a list of sound observations: symbologies that exist, texts in UTF-8, corners
/// that are numbers.
std::optional<std::vector<CodeObservation>> decodedCodes(const QByteArray& bytes);

} // namespace folvane
