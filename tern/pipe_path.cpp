#include "tern/pipe_path.h"

namespace tern {

std::wstring pipePath(const std::wstring& name) {
    if (name.size() > kLongestPipeName) return {};
    return kPipePrefix + name;
}

}  // namespace tern
