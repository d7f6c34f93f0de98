#include "tools/printpath/windows/text_file.h"

#include "tools/printpath/windows/failure.h"
#include "tools/printpath/windows/wide_text.h"

#include <fstream>
#include <iterator>
#include <system_error>

namespace printpath {

bool readWholeFile(const std::filesystem::path& file, std::string& bytes) {
    std::ifstream in(file, std::ios::binary);
    if (!in) return false;
    bytes.assign(std::istreambuf_iterator<char>(in), {});
    return !in.bad();
}

std::string readWholeFile(const std::filesystem::path& file) {
    std::string bytes;
    readWholeFile(file, bytes);
    return bytes;
}

void writeWholeFile(const std::filesystem::path& file, const std::string& bytes) {
    std::error_code ignored;
    std::filesystem::create_directories(file.parent_path(), ignored);
    std::ofstream out(file, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    out.close();
    if (!out) throw Failure(pathText(file) + " could not be written", Outcome::Unusable);
}

std::string pathText(const std::filesystem::path& file) {
    return utf8FromWide(file.wstring());
}

}  // namespace printpath
