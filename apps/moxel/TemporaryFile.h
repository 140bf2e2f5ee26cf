#pragma once

#include <filesystem>

namespace moxel {

/// A file that takes its final name once it is complete and is removed when it is given up. It lies in the final
/// folder, so that taking the name is one step that replaces what had it.
class TemporaryFile {
public:
    /// Creates it empty; throws `FileError`.
    explicit TemporaryFile(std::filesystem::path const& finalPath);
    TemporaryFile(TemporaryFile const&) = delete;
    TemporaryFile& operator=(TemporaryFile const&) = delete;
    ~TemporaryFile();

    std::filesystem::path const& path() const { return path_; }

    /// Throws `FileError`.
    void publish();

private:
    std::filesystem::path finalPath_;
    std::filesystem::path path_;
};

/// The file that a name stands for. One that is a link stands for what it leads to, even if that is not there yet.
std::filesystem::path resolved(std::filesystem::path const& path);

/// Throws `FileError` when no file can be made under that name.
void requireWritable(std::filesystem::path const& finalPath);

} // namespace moxel
