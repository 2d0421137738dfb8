// Another process that holds a file, and the locks that it may hold.
#pragma once

#include <fcntl.h>
#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>
#include <stdexcept>
#include <string>

// A process that does something to a file and holds it until this object ends.
class Holder {
public:
    Holder(const std::string& path, const std::function<bool(int)>& hold) {
        int ready[2];
        int end[2];
        if (pipe(ready) != 0 || pipe(end) != 0) throw std::runtime_error("no pipe");
        child_ = fork();
        if (child_ == 0) {
            close(end[1]);
            const int file = open(path.c_str(), O_RDWR);
            const char answer = file >= 0 && hold(file) ? 'y' : 'n';
            char unused = 0;
            if (write(ready[1], &answer, 1) == 1 && read(end[0], &unused, 1) < 0) _exit(1);
            _exit(0);
        }
        close(ready[1]);
        close(end[0]);
        end_ = end[1];
        char answer = 'n';
        isHeld_ = read(ready[0], &answer, 1) == 1 && answer == 'y';
        close(ready[0]);
    }
    ~Holder() {
        close(end_);
        waitpid(child_, nullptr, 0);
    }
    bool IsHeld() const { return isHeld_; }

private:
    pid_t child_ = -1;
    int end_ = -1;
    bool isHeld_ = false;
};

inline bool Lock(int file, short type, off_t start, off_t length) {
    struct flock lock = {};
    lock.l_type = type;
    lock.l_whence = SEEK_SET;
    lock.l_start = start;
    lock.l_len = length;
    return fcntl(file, F_SETLK, &lock) == 0;
}
