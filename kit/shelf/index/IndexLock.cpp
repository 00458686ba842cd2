// SPDX-License-Identifier: LGPL-2.1-or-later
#include "shelf/index/IndexLock.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace SorrelKit {

namespace {

/// The bytes of the file that are locked.
enum LockedByte : int {
    UserByte = 0,
    RefreshByte = 1,
    OpeningByte = 2,
};

} // namespace

IndexLock::IndexLock(const QByteArray &fileName)
{
    constexpr mode_t permissions = 0600;
    m_file = ::open((fileName + "-lock").constData(), O_RDWR | O_CREAT | O_CLOEXEC, permissions);
}

IndexLock::~IndexLock()
{
    if (m_file >= 0)
        ::close(m_file);
}

void IndexLock::beginOpening()
{
    lock(F_WRLCK, OpeningByte, true);
}

void IndexLock::endOpening()
{
    lock(F_UNLCK, OpeningByte);
}

bool IndexLock::join()
{
    const bool wasAlone = lock(F_WRLCK, UserByte);
    lock(F_RDLCK, UserByte);
    return wasAlone;
}

bool IndexLock::tryToRefresh()
{
    return lock(F_WRLCK, RefreshByte);
}

void IndexLock::endRefresh()
{
    lock(F_UNLCK, RefreshByte);
}

// A lock of an open file, not of the process: several objects of one process exclude each other, too.
bool IndexLock::lock(int type, int place, bool waits) const
{
    if (m_file < 0)
        return true;
    struct flock part = {};
    part.l_type = short(type);
    part.l_whence = SEEK_SET;
    part.l_start = place;
    part.l_len = 1;
    int result = 0;
    do {
        result = ::fcntl(m_file, waits ? F_OFD_SETLKW : F_OFD_SETLK, &part);
    } while (result != 0 && errno == EINTR);
    return result == 0 || (errno != EAGAIN && errno != EACCES);
}

} // namespace SorrelKit
