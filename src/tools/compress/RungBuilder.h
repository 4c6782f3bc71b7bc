#pragma once

#include "platform/tasks/Answer.h"
#include "records/BuildPlan.h"
#include "tools/compress/Compression.h"

#include <QByteArray>
#include <QList>

#include <memory>

namespace folvane {

class PDFEngine;

/// Makes the rungs of one document, as it is now, for all who ask: what is there or under way is not built again. Keeps
/// what it built as long as it lives, whatever the size: what is saved must be what was measured. On the interface thread.
class RungBuilder {
public:
    /// The engine must outlive this. `plan` has no quality.
    RungBuilder(PDFEngine& engine, BuildPlan plan) : m_engine(engine), m_plan(std::move(plan)) {}

    /// Takes a rung that was built before.
    void keep(Compression::Rung rung, QByteArray data);
    /// How often the engine was asked.
    int builds() const { return m_builds; }

    /// The PDF of the rung. Throws what the engine throws, and Cancelled once stopped.
    static QCoro::Task<QByteArray> build(std::shared_ptr<RungBuilder> builder, Compression::Rung rung,
                                         std::stop_token stop);

private:
    struct Built {
        Compression::Rung rung;
        QByteArray data;
    };
    struct Running {
        Compression::Rung rung;
        QList<Answer<bool>> waiting; ///< for its end
    };

    const QByteArray* find(const Compression::Rung& rung) const;
    Running* running(const Compression::Rung& rung);
    void begin(const Compression::Rung& rung);
    void end(const Compression::Rung& rung);

    PDFEngine& m_engine;
    const BuildPlan m_plan;
    std::vector<Built> m_built;
    std::vector<Running> m_running;
    int m_builds = 0;
};

} // namespace folvane
