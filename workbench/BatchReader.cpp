#include "workbench/BatchReader.h"

#include <filesystem>

std::unique_ptr<BatchReader> BatchReader::Open(const std::string& path, bool announce)
{
    std::error_code ec;
    if (path.empty() || std::filesystem::is_directory(path, ec))
        return nullptr;
    std::unique_ptr<BatchReader> reader(new BatchReader(path, announce));
    reader->in_.open(path, std::ios::binary);
    if (!reader->in_)
        return nullptr;
    return reader;
}

BatchReader::Read BatchReader::Next(std::string& line, size_t limit)
{
    line.clear();
    std::streambuf* buffer = in_.rdbuf();
    for (int c = buffer->sbumpc();; c = buffer->sbumpc()) {
        if (c == std::char_traits<char>::eof()) {
            if (line.empty())
                return Read::End;
            break;
        }
        if (c == '\n')
            break;
        if (line.size() == limit) {
            ++lineNumber_;
            return Read::TooLong;
        }
        line += static_cast<char>(c);
    }
    ++lineNumber_;
    return Read::Line;
}

int BatchReader::CountRest(size_t limit)
{
    int count = 0;
    std::string line;
    for (Read r = Next(line, limit); r != Read::End; r = Next(line, limit)) {
        ++count;
        if (r == Read::TooLong)
            break;
    }
    return count;
}
