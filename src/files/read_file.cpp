#include "files/read_file.h"

#include <fcntl.h>

#include <cerrno>

#include "files/descriptor.h"

namespace Files {

FileContent readFile(const std::string& path) {
    using Reason = ReadFailure::Reason;
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY));
    struct stat status {};
    if (!file.isOpen() || ::fstat(file.get(), &status) != 0) throw ReadFailure{Reason::CannotOpen, errno};
    if (S_ISDIR(status.st_mode)) throw ReadFailure{Reason::IsDirectory, EISDIR};
    FileContent content{{}, FileStamp::of(status)};
    const int error = readAll(file.get(), content.text, static_cast<std::size_t>(status.st_size));
    if (error) throw ReadFailure{Reason::CannotRead, error};
    return content;
}

}  // namespace Files
