// An extension that tries what it is told to, and answers `describe` with how that went.
//
// It reads its orders from the file "orders" in its container, one a line: a word and what it is about. Its answer has
// "findings", a text for each order: "yes", the name of the error, or a number.

#include <arpa/inet.h>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <fstream>
#include <functional>
#include <iostream>
#include <map>
#include <netdb.h>
#include <netinet/in.h>
#include <sched.h>
#include <spawn.h>
#include <sstream>
#include <string>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

using Findings = std::string;

Findings verdict(bool succeeded) {
    return succeeded ? "yes" : strerrorname_np(errno);
}

Findings opened(const std::string& path, int flags) {
    const int file = open(path.c_str(), flags | O_CLOEXEC, 0600);
    const Findings found = verdict(file >= 0);
    close(file);
    return found;
}

Findings list(const std::string& path) {
    DIR* folder = opendir(path.c_str());
    const Findings found = verdict(folder != nullptr);
    if (folder != nullptr) {
        closedir(folder);
    }
    return found;
}

Findings run(const std::string& path) {
    std::string program = path;
    std::array<char*, 2> arguments{program.data(), nullptr};
    pid_t process = 0;
    errno = posix_spawn(&process, program.c_str(), nullptr, nullptr, arguments.data(), environ);
    const Findings found = verdict(errno == 0);
    if (found == "yes") {
        waitpid(process, nullptr, 0);
    }
    return found;
}

/// A socket with which `use` is tried.
template <class Use>
Findings withSocket(int family, int type, Use use) {
    const int handle = socket(family, type | SOCK_CLOEXEC, 0);
    const Findings found = verdict(handle >= 0 && use(handle));
    close(handle);
    return found;
}

sockaddr_in loopback(const std::string& port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(std::stoi(port)));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
}

template <class Address>
const sockaddr* general(const Address& address) {
    return reinterpret_cast<const sockaddr*>(&address);
}

Findings connectTcp(const std::string& port) {
    const sockaddr_in address = loopback(port);
    return withSocket(AF_INET, SOCK_STREAM,
                      [&](int handle) { return connect(handle, general(address), sizeof address) == 0; });
}

Findings sendUdp(const std::string& port) {
    const sockaddr_in address = loopback(port);
    return withSocket(AF_INET, SOCK_DGRAM,
                      [&](int handle) { return sendto(handle, "x", 1, 0, general(address), sizeof address) == 1; });
}

Findings resolve(const std::string& name) {
    addrinfo* addresses = nullptr;
    const int failure = getaddrinfo(name.c_str(), "80", nullptr, &addresses);
    if (failure != 0) {
        return gai_strerror(failure);
    }
    freeaddrinfo(addresses);
    return "yes";
}

Findings bindTcp(const std::string& port) {
    const sockaddr_in address = loopback(port);
    return withSocket(AF_INET, SOCK_STREAM,
                      [&](int handle) { return bind(handle, general(address), sizeof address) == 0; });
}

Findings listenTcp(const std::string&) {
    // Without an address of its own the system chooses one.
    return withSocket(AF_INET, SOCK_STREAM, [](int handle) { return listen(handle, 1) == 0; });
}

Findings connectLocal(const std::string& path, int type) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    return withSocket(AF_UNIX, type,
                      [&](int handle) { return connect(handle, general(address), sizeof address) == 0; });
}

/// How many of so many children live at once.
Findings fork(const std::string& count) {
    std::vector<pid_t> children;
    for (int i = 0; i < std::stoi(count); ++i) {
        const pid_t child = ::fork();
        if (child == 0) {
            pause();
            _exit(0);
        }
        if (child < 0) {
            break;
        }
        children.push_back(child);
    }
    for (const pid_t child : children) {
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
    }
    return std::to_string(children.size());
}

Findings startThreads(const std::string& count) {
    std::vector<std::thread> threads;
    try {
        while (threads.size() < std::stoul(count)) {
            threads.emplace_back([] { usleep(100'000); });
        }
    } catch (const std::system_error&) {
        // Their number says it.
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    return std::to_string(threads.size());
}

/// Whether so many MiB can be had, as private or shared memory.
Findings allocate(const std::string& mebibytes, int kind) {
    const std::size_t size = std::stoul(mebibytes) << 20U;
    void* memory = mmap(nullptr, size, PROT_READ | PROT_WRITE, kind | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    const Findings found = verdict(memory != MAP_FAILED);
    if (memory != MAP_FAILED) {
        munmap(memory, size);
    }
    return found;
}

/// How many of so many descriptors it can have, those that it was started with among them.
Findings openDescriptors(const std::string& count) {
    int last = 2;
    while (last + 1 < std::stoi(count)) {
        const int next = dup(0);
        if (next < 0) {
            break;
        }
        last = next;
    }
    for (int each = 3; each <= last; ++each) {
        close(each);
    }
    return std::to_string(last + 1);
}

Findings countOpenFiles(const std::string&) {
    int count = 0;
    for (int each = 0; each < 1024; ++each) {
        count += static_cast<int>(fcntl(each, F_GETFD) >= 0);
    }
    return std::to_string(count);
}

/// Whether a program that it has written can be run.
Findings dropAndRun(const std::string& path) {
    std::ofstream(path) << "#!/bin/true\n";
    chmod(path.c_str(), 0700);
    return run(path);
}

const std::map<std::string, std::function<Findings(const std::string&)>> orders{
    {"read", [](const std::string& path) { return opened(path, O_RDONLY); }},
    {"write", [](const std::string& path) { return opened(path, O_WRONLY | O_CREAT); }},
    {"truncate", [](const std::string& path) { return verdict(truncate(path.c_str(), 0) == 0); }},
    {"remove", [](const std::string& path) { return verdict(unlink(path.c_str()) == 0); }},
    {"rename", [](const std::string& path) { return verdict(rename(path.c_str(), (path + "2").c_str()) == 0); }},
    {"makeFolder", [](const std::string& path) { return verdict(mkdir(path.c_str(), 0700) == 0); }},
    {"makePipe", [](const std::string& path) { return verdict(mkfifo(path.c_str(), 0600) == 0); }},
    {"list", list},
    {"run", run},
    {"dropAndRun", dropAndRun},
    {"connect", connectTcp},
    {"send", sendUdp},
    {"resolve", resolve},
    {"bind", bindTcp},
    {"listen", listenTcp},
    {"stream", [](const std::string& path) { return connectLocal(path, SOCK_STREAM); }},
    {"datagram", [](const std::string& path) { return connectLocal(path, SOCK_DGRAM); }},
    {"fork", fork},
    {"threads", startThreads},
    {"allocate", [](const std::string& size) { return allocate(size, MAP_PRIVATE); }},
    {"share", [](const std::string& size) { return allocate(size, MAP_SHARED); }},
    {"descriptors", openDescriptors},
    {"openFiles", countOpenFiles},
    {"signal", [](const std::string& process) { return verdict(kill(std::stoi(process), 0) == 0); }},
    {"newNamespace", [](const std::string&) { return verdict(unshare(CLONE_NEWUSER) == 0); }},
    {"ownSession", [](const std::string&) { return std::to_string(static_cast<int>(getsid(0) == getpid())); }},
    {"noNewPrivileges", [](const std::string&) { return std::to_string(prctl(PR_GET_NO_NEW_PRIVS, 0, 0, 0, 0)); }},
    {"coreSize",
     [](const std::string&) {
         rlimit limit{};
         getrlimit(RLIMIT_CORE, &limit);
         return std::to_string(limit.rlim_cur);
     }},
    {"user", [](const std::string&) { return std::to_string(getuid()); }},
};

} // namespace

int main() {
    // Read whole, so that none of its descriptors is the file's while the orders are carried out.
    std::stringstream file;
    file << std::ifstream(std::string(std::getenv("HOME")) + "/orders").rdbuf();
    std::string request;
    std::getline(std::cin, request);
    std::string findings;
    for (std::string line; std::getline(file, line);) {
        const std::size_t blank = line.find(' ');
        findings +=
            (findings.empty() ? "\"" : ", \"") + orders.at(line.substr(0, blank))(line.substr(blank + 1)) + "\"";
    }
    std::cout << R"({"jsonrpc": "2.0", "id": 1, "result": {"identifier": "probe", "widgets": [], "findings": [)"
              << findings << "]}}" << std::endl;
}
