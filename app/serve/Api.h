// What the server answers: the page, and the interface for programs.
#pragma once

#include <atomic>
#include <filesystem>
#include <mutex>
#include <optional>
#include <string>

#include "Guard.h"
#include "Http.h"
#include "Pool.h"

namespace frigana::serve {

// Limits of the interface, beside those of the transport and of the workers.
inline constexpr std::size_t longestBody = std::size_t{1024} * 1024;
inline constexpr int deepestNesting = 64;
inline constexpr std::size_t mostCasesOfAStudy = 200'000;
inline constexpr int mostStudiesAtOnce = 4;

class Api {
  public:
    Api(workers::Pool& pool, const Guard& guard) : pool_(pool), guard_(guard) {}

    // What the transport calls. The interface outlives the server.
    http::Service service();

    std::optional<http::Answer> admit(const http::Request& request) const;
    http::Answer answer(const http::Request& request);

  private:
    struct Route;
    static const Route routes[];

    static std::string methodsOf(std::string_view path);
    http::Answer health(const http::Request& request);
    http::Answer version(const http::Request& request);
    http::Answer requests(const http::Request& request);
    http::Answer fluids(const http::Request& request);
    http::Answer openApi(const http::Request& request);
    http::Answer run(const http::Request& request);
    http::Answer chart(const http::Request& request);
    http::Answer state(const http::Request& request);
    http::Answer convert(const http::Request& request);
    http::Answer study(const http::Request& request);
    http::Answer calculated(std::string_view task, std::string_view about);

    workers::Pool& pool_;
    Guard guard_;
    std::atomic<int> runningStudies_ = 0;
    std::mutex mutex_;
    http::Answer fluids_;  // once it is known
    std::filesystem::file_time_type blendsChanged_{};
};

// Headers of every answer: nothing is loaded from elsewhere, nothing inline runs, nobody frames the page.
const http::Headers& headersOfEveryAnswer();

}  // namespace frigana::serve
