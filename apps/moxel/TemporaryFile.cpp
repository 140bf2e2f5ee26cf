#include "apps/moxel/TemporaryFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <string>
#include <system_error>

#include "apps/moxel/Errors.h"

namespace moxel {

namespace fs = std::filesystem;

namespace {

/// Creates a file under a name that none had.
fs::path createIn(fs::path const& folder)
{
    std::string const stem = ".moxel-" + std::to_string(getpid()) + '-';
    for (unsigned int number = 0;; ++number) {
        fs::path path = folder / (stem + std::to_string(number) + ".part");
        int const file = ::open(path.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, 0666);
        if (file >= 0) {
            ::close(file);
            return path;
        }
        if (errno != EEXIST) {
            throw FileError(std::strerror(errno));
        }
    }
}

} // namespace

fs::path resolved(fs::path const& path)
{
    constexpr int mostLinks = 40; // as the system has it
    std::error_code error;
    fs::path target = fs::absolute(path); // the bare name of a file that is not there would stay bare
    for (int i = 0; i < mostLinks && !fs::exists(target, error) && fs::is_symlink(target, error); ++i) {
        target = target.parent_path() / fs::read_symlink(target, error);
    }
    fs::path const result = fs::weakly_canonical(target, error);
    return error ? target : result;
}

TemporaryFile::TemporaryFile(fs::path const& finalPath)
    : finalPath_(resolved(finalPath))
    , path_(createIn(finalPath_.parent_path()))
{
}

TemporaryFile::~TemporaryFile()
{
    std::error_code ignored;
    fs::remove(path_, ignored);
}

void TemporaryFile::publish()
{
    std::error_code error;
    fs::file_status const old = fs::status(finalPath_, error);
    if (fs::exists(old)) {
        fs::permissions(path_, old.permissions(), error);
    }
    fs::rename(path_, finalPath_, error);
    if (error) {
        throw FileError(error.message());
    }
}

void requireWritable(fs::path const& finalPath)
{
    fs::path const path = resolved(finalPath);
    std::error_code ignored;
    if (fs::exists(path, ignored) && !fs::is_regular_file(path, ignored)) {
        throw FileError("it is not a file");
    }
    fs::path const folder = path.parent_path();
    if (!fs::is_directory(folder, ignored)) {
        throw FileError("there is no folder " + quoted(folder));
    }
    if (::access(folder.c_str(), W_OK | X_OK) != 0) {
        throw FileError(std::strerror(errno));
    }
}

} // namespace moxel
