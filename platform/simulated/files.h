#pragma once

#include "platform/simulated/case_insensitive.h"
#include "platform/simulated/spin_lock.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace platform::simulated {

// The files of the simulated system. The case of a path does not matter, and every folder exists.
// Any thread may call.
class Files {
public:
    enum class Access { Writable, ReadOnly };

    void put(std::string_view path, std::string_view bytes, Access access = Access::Writable);
    [[nodiscard]] std::optional<std::string> content(std::string_view path) const;
    void reset();

    // For the simulated services.
    [[nodiscard]] bool copy(std::string_view from, std::string_view to);
    [[nodiscard]] bool write(std::string_view path, std::string_view bytes);

private:
    struct File {
        std::string bytes;
        Access access = Access::Writable;
    };
    using Map = std::map<std::string, File, CaseInsensitive>;

    [[nodiscard]] bool replace(std::string_view path, File&& file);

    mutable SpinLock _lock;
    Map _files;
};

}  // namespace platform::simulated
