#pragma once

#include "pdf/structure/qpdfInclude.h"
#include "platform/files/SourceFile.h"

#include <memory>
#include <string>
#include <vector>

namespace folvane::pdf {

/// Lets qpdf read a held source by position, so that other readers of the same descriptor do not disturb it.
class FileInput : public InputSource {
public:
    explicit FileInput(std::shared_ptr<const SourceFile> file);

    qpdf_offset_t findAndSkipNextEOL() override;
    const std::string& getName() const override { return m_name; }
    qpdf_offset_t tell() override { return m_position; }
    void seek(qpdf_offset_t offset, int whence) override;
    void rewind() override { m_position = 0; }
    /// Throws std::runtime_error when the file cannot be read any more.
    size_t read(char* buffer, size_t length) override;
    void unreadCh(char) override { --m_position; }

private:
    size_t readBuffered(char* buffer, size_t length);
    size_t readFile(qpdf_offset_t offset, char* buffer, size_t length) const;

    std::shared_ptr<const SourceFile> m_file;
    std::string m_name = "source";
    qpdf_offset_t m_position = 0;
    qpdf_offset_t m_bufferStart = 0;
    std::vector<char> m_buffer;
};

} // namespace folvane::pdf
