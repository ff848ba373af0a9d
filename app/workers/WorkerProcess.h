// What a worker does: one request after the other, text in and text out, in a folder of its own.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace frigana::workers {

// A calculation as a worker runs it. What it throws is an answer too.
using Calculation = std::string (*)(std::string_view request);

struct Limits {
    std::chrono::milliseconds time{30'000};       // of one request, by the clock on the wall
    std::size_t memory = std::size_t{1} << 30;    // address space of a worker [bytes]
    std::size_t file = std::size_t{256} << 20;    // the largest file that a calculation may write [bytes]
    std::size_t request = std::size_t{16} << 20;  // the longest request [bytes]
    std::size_t answer = std::size_t{64} << 20;   // the longest answer [bytes]
};

// Kinds of the frames between a pool and its workers.
enum class FrameKind : std::uint32_t { request, answer, threw, outOfMemory };

// Serves the requests that arrive on the socket until it is closed; never returns. `folder` becomes the current folder
// and the place of temporary files (TMPDIR) and is emptied after every request; what the calculation says on standard
// output and standard error goes to the file `said`, which holds the words of the request in work.
[[noreturn]] void serveRequests(int socket, Calculation calculate, const Limits& limits, const std::string& folder,
                                const std::string& said);

}  // namespace frigana::workers
