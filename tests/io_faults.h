// Makes the system's reads or writes fail part-way through a file, for as long as the
// object lives: the first `succeeding` calls go through, every later one fails with
// `error` (or, for a short write, writes one byte less and reports no error).
#pragma once

#include <cerrno>
#include <cstdint>

#include "storage/system_io.h"

namespace tessellum::test {

class IoFault {
public:
    enum Kind { kFailingRead, kFailingWrite, kShortWrite };

    IoFault(Kind kind, int succeeding, int error) {
        state = {kind, succeeding, error, 0};
        if (kind == kFailingRead)
            system_io::activeRead = Read;
        else
            system_io::activeWrite = Write;
    }
    ~IoFault() {
        system_io::activeRead = system_io::ReadDescriptor;
        system_io::activeWrite = system_io::WriteDescriptor;
    }
    IoFault(const IoFault&) = delete;
    IoFault& operator=(const IoFault&) = delete;

    // Calls that reached the hook, failed or not.
    int Calls() const { return state.calls; }
    bool Fired() const { return state.calls > state.succeeding; }

private:
    struct State {
        Kind kind;
        int succeeding;
        int error;
        int calls;
    };
    static inline State state;

    static int64_t Read(int fd, void* buffer, uint32_t size) {
        if (state.calls++ < state.succeeding) return system_io::ReadDescriptor(fd, buffer, size);
        errno = state.error;
        return -1;
    }
    static int64_t Write(int fd, const void* buffer, uint32_t size) {
        if (state.calls++ < state.succeeding) return system_io::WriteDescriptor(fd, buffer, size);
        if (state.kind == kShortWrite) {
            if (size == 0) return 0;
            return system_io::WriteDescriptor(fd, buffer, size - 1);
        }
        errno = state.error;
        return -1;
    }
};

}  // namespace tessellum::test
