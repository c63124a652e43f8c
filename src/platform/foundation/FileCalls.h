#pragma once

#include <sys/stat.h>
#include <sys/types.h>

#include <cstddef>

namespace orv::platform {

/// The system calls that an atomic write makes, each with its own arguments and answers, so that a
/// test can let any of them fail or be the last one.
class FileCalls {
public:
    virtual ~FileCalls() = default;

    static FileCalls &system();

    virtual int openAt(int folder, const char *name, int flags, mode_t mode);
    virtual int lock(int file);
    virtual int status(int file, struct stat *result);
    virtual int statusAt(int folder, const char *name, struct stat *result);
    virtual int setMode(int file, mode_t mode);
    virtual int truncate(int file);
    virtual ssize_t write(int file, const void *bytes, std::size_t count);
    virtual int sync(int file);
    virtual int renameAt(int folder, const char *from, const char *to);
    virtual int unlinkAt(int folder, const char *name);
    virtual int close(int file);

protected:
    FileCalls() = default;
    FileCalls(const FileCalls &) = default;
    FileCalls &operator=(const FileCalls &) = default;
};

} // namespace orv::platform
