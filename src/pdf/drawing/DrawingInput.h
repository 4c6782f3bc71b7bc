#pragma once

#include "platform/files/SourceFile.h"

#include <QByteArray>

#include <memory>

class BaseStream;

namespace folvane::pdf {

class DrawingBudget;

/// The bytes that the drawing library reads. Once a drawing is overdue, nothing more can be read: so it ends also where
/// the library never asks whether to go on. What it then took for the document's contents is wrong, and the document has
/// to be opened again.
class DrawingInput : public std::enable_shared_from_this<DrawingInput> {
public:
    explicit DrawingInput(std::shared_ptr<const SourceFile> file);
    explicit DrawingInput(QByteArray bytes);

    /// Whose time it is as long as this lives.
    class Watch {
    public:
        Watch(DrawingInput& input, DrawingBudget& budget) : m_input(input)
        {
            m_input.m_budget = &budget;
            m_input.m_ranDry = false;
        }
        ~Watch() { m_input.m_budget = nullptr; }
        Q_DISABLE_COPY_MOVE(Watch)

    private:
        DrawingInput& m_input;
    };

    /// The last budget was overdue when something was to be read.
    bool ranDry() const { return m_ranDry; }
    bool isUnchanged() const { return !m_file || m_file->unchanged(); }

    /// A stream of the library's over all of it, which owns it with the others.
    BaseStream* newStream();

    // For its streams.
    bool isDry();
    bool isInMemory() const { return !m_file; }
    qint64 read(qint64 position, char* to, qint64 size) const;

private:
    qint64 size() const { return m_file ? m_file->size() : m_bytes.size(); }

    const std::shared_ptr<const SourceFile> m_file;
    const QByteArray m_bytes;
    DrawingBudget* m_budget = nullptr;
    bool m_ranDry = false;
};

} // namespace folvane::pdf
