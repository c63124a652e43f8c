#include "platform/foundation/FileCalls.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cstdio>

namespace orv::platform {

FileCalls &FileCalls::system()
{
    static FileCalls calls;
    return calls;
}

int FileCalls::openAt(int folder, const char *name, int flags, mode_t mode)
{
    return ::openat(folder, name, flags, mode);
}

int FileCalls::lock(int file)
{
    return ::flock(file, LOCK_EX);
}

int FileCalls::status(int file, struct stat *result)
{
    return ::fstat(file, result);
}

int FileCalls::statusAt(int folder, const char *name, struct stat *result)
{
    return ::fstatat(folder, name, result, AT_SYMLINK_NOFOLLOW);
}

int FileCalls::setMode(int file, mode_t mode)
{
    return ::fchmod(file, mode);
}

int FileCalls::truncate(int file)
{
    return ::ftruncate(file, 0);
}

ssize_t FileCalls::write(int file, const void *bytes, std::size_t count)
{
    return ::write(file, bytes, count);
}

int FileCalls::sync(int file)
{
    return ::fsync(file);
}

int FileCalls::renameAt(int folder, const char *from, const char *to)
{
    return ::renameat(folder, from, folder, to);
}

int FileCalls::unlinkAt(int folder, const char *name)
{
    return ::unlinkat(folder, name, 0);
}

int FileCalls::close(int file)
{
    return ::close(file);
}

} // namespace orv::platform
