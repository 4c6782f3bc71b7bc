#pragma once

#include "documents/AppModel.h"
#include "tools/compress/Compression.h"
#include "tools/compress/RungBuilder.h"

#include <QProperty>

#include <map>
#include <memory>
#include <optional>

namespace folvane {

/// The state of an open compress sheet, whose every size is that of a finished PDF. Setting `choice` and `limitIndex` is
/// what the user does; the rest follows. All work stops when this dies.
class CompressMeasuring {
public:
    using Results = std::map<Compression::Choice, QByteArray>;

    /// The model must outlive this.
    CompressMeasuring(AppModel& model, OpenFilePtr file);
    ~CompressMeasuring();
    Q_DISABLE_COPY_MOVE(CompressMeasuring)

    QProperty<Compression::Choice> choice{Compression::Choice::Medium};
    QProperty<Results> results;                     ///< of all choices but `UpTo`, as they come
    QProperty<std::optional<Compression::Fit>> fit; ///< for the current limit, while `UpTo` is chosen
    QProperty<int> limitIndex;                      ///< into Compression::limits; changes are stored
    QProperty<std::optional<QString>> errorText;

    /// Begins to measure, and to fit when that is chosen. Changed pages are measured anew by themselves.
    void start();
    /// Builds original, medium and small, one after the other. It may outlive this.
    QCoro::Task<> measure();
    void stop();

    /// The PDF of the choice; none while it is not there.
    std::optional<QByteArray> chosenData() const;
    /// Why small is hardly smaller than the original; none when it is, or not known yet.
    std::optional<QString> mostlyTextNote() const;

private:
    void restart();
    void refit();
    QCoro::Task<> buildAll(std::stop_token stop);
    QCoro::Task<> search(qint64 limit, std::stop_token stop);
    QCoro::Task<> tellFailure(Job work, std::stop_token stop);
    void storeLimit();

    AppModel& m_model;
    OpenFilePtr m_file;
    std::shared_ptr<RungBuilder> m_builder;
    std::stop_source m_measuring;
    std::stop_source m_fitting;
    bool m_started = false;
    std::vector<QPropertyNotifier> m_notifiers; // last, so that they are the first to go
};

/// "report (1.2 MB)", for a copy of that size.
QString compressedName(const OpenFile& file, qint64 bytes);

} // namespace folvane
