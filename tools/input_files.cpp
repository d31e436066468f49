#include "input_files.hpp"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace morv::cli {
namespace {

std::string system_reason() { return std::strerror(errno); }

// The bytes to make room for before the first read: a regular file's size,
// and one more so that the read after its bytes finds the end; for anything
// else, a pipe say, a start.
std::size_t expected_size(int fd) {
    struct stat status {};
    if (::fstat(fd, &status) == 0 && S_ISREG(status.st_mode)) {
        return static_cast<std::size_t>(status.st_size) + 1;
    }
    return std::size_t{1} << 16;
}

// Reads until the end of `fd` straight into `text`, growing it only when it
// is full; a directory fails here with "Is a directory".
std::optional<std::string> read_all(int fd, std::string& text) {
    text.reserve(expected_size(fd));
    for (;;) {
        if (text.size() == text.capacity()) {
            text.reserve(2 * text.capacity());
        }
        std::size_t const size = text.size();
        text.resize(text.capacity());
        ssize_t const count = ::read(fd, text.data() + size, text.size() - size);
        text.resize(size + static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
        if (count == 0) {
            return std::nullopt;
        }
        if (count < 0) {
            if (errno == EINTR) {
                continue;
            }
            return system_reason();
        }
    }
}

std::optional<std::string> write_all(int fd, std::string const& text) {
    std::size_t written = 0;
    while (written < text.size()) {
        ssize_t const count = ::write(fd, text.data() + written, text.size() - written);
        if (count < 0) {
            if (errno == EINTR) {
                continue;
            }
            return system_reason();
        }
        written += static_cast<std::size_t>(count);
    }
    return std::nullopt;
}

// The mode that the replaced file had, or that a new file gets under the
// process's umask.
mode_t mode_for(std::string const& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) == 0) {
        return status.st_mode & 07777;
    }
    mode_t const mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

std::string temporary_template(std::string const& path) {
    auto const slash = path.rfind('/');
    std::string const folder = slash == std::string::npos ? "" : path.substr(0, slash + 1);
    std::string const name = slash == std::string::npos ? path : path.substr(slash + 1);
    return folder + "." + name + ".XXXXXX";
}

}  // namespace

InputText read_input(std::string const& path) {
    InputText input;
    if (path == "-") {
        input.error = read_all(STDIN_FILENO, input.text);
        return input;
    }
    int const fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) {
        input.error = system_reason();
        return input;
    }
    input.error = read_all(fd, input.text);
    ::close(fd);
    return input;
}

std::string display_name(std::string const& path) { return path == "-" ? "<stdin>" : path; }

std::string unreadable_message(std::string const& path, std::string const& reason) {
    return "morv-qc-json: cannot read " + display_name(path) + ": " + reason + "\n";
}

std::string unwritable_message(std::string const& path, std::string const& reason) {
    return "morv-qc-json: cannot write " + path + ": " + reason + "\n";
}

std::optional<std::string> write_file_atomically(std::string const& path, std::string const& text) {
    std::string temporary = temporary_template(path);
    int const fd = ::mkstemp(temporary.data());
    if (fd < 0) {
        return system_reason();
    }
    std::optional<std::string> error = write_all(fd, text);
    if (!error && (::fchmod(fd, mode_for(path)) != 0 || ::fsync(fd) != 0)) {
        error = system_reason();
    }
    if (::close(fd) != 0 && !error) {
        error = system_reason();
    }
    if (!error && ::rename(temporary.c_str(), path.c_str()) != 0) {
        error = system_reason();
    }
    if (error) {
        ::unlink(temporary.c_str());
    }
    return error;
}

}  // namespace morv::cli
