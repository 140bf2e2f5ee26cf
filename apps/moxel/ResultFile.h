#pragma once

#include <filesystem>
#include <optional>
#include <utility>

#include "apps/moxel/Errors.h"
#include "apps/moxel/TemporaryFile.h"

namespace moxel {

/// A file that takes a result when all results are there. What fails is told with the file's name, as `FileError`.
class ResultFile {
public:
    /// Throws when there can be no such file.
    explicit ResultFile(std::filesystem::path path)
        : path_(std::move(path))
    {
        guard([this] { requireWritable(path_); });
    }

    std::filesystem::path const& path() const { return path_; }

    /// Calls `write` with the name of a temporary file.
    template <class Write>
    void store(Write const& write)
    {
        guard([&] {
            file_.emplace(path_);
            write(file_->path());
        });
    }

    void publish()
    {
        guard([this] { file_->publish(); });
    }

    template <class Work>
    void guard(Work const& work) const
    {
        try {
            work();
        } catch (FileError const& error) {
            throw FileError("cannot write " + quoted(path_) + ": " + error.what());
        }
    }

private:
    std::filesystem::path path_;
    std::optional<TemporaryFile> file_;
};

} // namespace moxel
