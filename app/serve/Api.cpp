#include "Api.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "Calculations.h"
#include "CatalogueJson.h"
#include "Complaint.h"
#include "OpenApi.h"
#include "Page.h"
#include "StoredBlends.h"
#include "Study.h"
#include "StudyStream.h"

namespace frigana::serve {

namespace {

http::Answer json(const nlohmann::ordered_json& content) {
    return {200, std::string(jsonType), content.dump(2) + "\n", {{"Cache-Control", "no-store"}}, {}};
}

const PageFile* pageFile(std::string_view path) {
    const auto files = pageFiles();
    const auto found = std::ranges::find(files, path == "/" ? "/index.html" : path, &PageFile::path);
    return found == files.end() ? nullptr : &*found;
}

http::Answer page(const PageFile& file, const http::Request& request) {
    http::Answer answer{
        200, std::string(file.type), "", {{"Cache-Control", "no-cache"}, {"ETag", std::string(file.tag)}}, {}};
    const auto known = request.header("If-None-Match");
    if (std::ranges::find(known, file.tag) != known.end())
        answer.status = 304;
    else
        answer.body = file.bytes;
    return answer;
}

// Nesting beyond any request that means something: told before a parser walks it. The texts of the body are passed
// over.
bool nestedTooDeep(std::string_view body) {
    int depth = 0;
    bool inText = false;
    for (std::size_t i = 0; i < body.size(); ++i) {
        const char character = body[i];
        if (inText) {
            if (character == '\\') ++i;
            if (character == '"') inText = false;
            continue;
        }
        if (character == '"') inText = true;
        if ((character == '[' || character == '{') && ++depth > deepestNesting) return true;
        if (character == ']' || character == '}') --depth;
    }
    return false;
}

// Counts itself as long as it is there.
class Counted {
  public:
    explicit Counted(std::atomic<int>& number) : number_(number) { ++number_; }
    ~Counted() { --number_; }
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;

  private:
    std::atomic<int>& number_;
};

}  // namespace

const http::Headers& headersOfEveryAnswer() {
    static const http::Headers headers = {
        {"Content-Security-Policy",
         "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self' data: blob:; font-src 'self'; "
         "connect-src 'self'; manifest-src 'self'; base-uri 'none'; form-action 'none'; frame-ancestors 'none'"},
        {"X-Content-Type-Options", "nosniff"},
        {"Referrer-Policy", "no-referrer"},
        {"Cross-Origin-Opener-Policy", "same-origin"},
        {"Cross-Origin-Resource-Policy", "same-origin"},
    };
    return headers;
}

// The interface: every route once.
struct Api::Route {
    std::string_view method, path;
    http::Answer (Api::*answer)(const http::Request&);
};

constexpr Api::Route Api::routes[] = {
    // clang-format off
    {"GET",  "/api/health",       &Api::health},
    {"GET",  "/api/version",      &Api::version},
    {"GET",  "/api/openapi.json", &Api::openApi},
    {"GET",  "/api/requests",     &Api::requests},
    {"GET",  "/api/fluids",       &Api::fluids},
    {"POST", "/api/run",          &Api::run},
    {"POST", "/api/chart",        &Api::chart},
    {"POST", "/api/state",        &Api::state},
    {"POST", "/api/convert",      &Api::convert},
    {"POST", "/api/study",        &Api::study},
    // clang-format on
};

http::Service Api::service() {
    return {[this](const http::Request& request) { return admit(request); },
            [this](const http::Request& request) { return answer(request); },
            [](int status, std::string_view text) { return complaint(status, "refused", text); }};
}

// The methods that a path knows, for people and for the header Allow; empty for an unknown path.
std::string Api::methodsOf(std::string_view path) {
    if (pageFile(path) != nullptr) return "GET, HEAD, OPTIONS";
    std::string methods;
    for (const Route& route : routes)
        if (route.path == path) methods += std::string(route.method) + (route.method == "GET" ? ", HEAD, " : ", ");
    return methods.empty() ? methods : methods + "OPTIONS";
}

std::optional<http::Answer> Api::admit(const http::Request& request) const {
    if (auto refusal = guard_.refusal(request)) return refusal;
    const std::string methods = methodsOf(request.path);
    if (methods.empty())
        return complaint(404, "unknown_path",
                         "There is no " + request.path.substr(0, 200) + " here; the page / tells what there is.");
    const bool allowed = (", " + methods + ",").find(", " + request.method + ",") != std::string::npos;
    if (allowed && request.method != "OPTIONS") return refusalOfBody(request, longestBody);
    http::Answer answer = allowed
                              ? http::Answer{204, std::string(jsonType), "", {}, {}}
                              : complaint(405, "unknown_method",
                                          request.path + " answers to " + methods + ", not to " + request.method + ".");
    answer.headers.emplace_back("Allow", methods);
    return answer;
}

http::Answer Api::answer(const http::Request& request) {
    if (const PageFile* file = pageFile(request.path)) return page(*file, request);
    if (nestedTooDeep(request.body))
        return complaint(400, "nested_too_deep",
                         "The request is nested more than " + std::to_string(deepestNesting) + " levels deep.");
    const std::string_view method = request.method == "HEAD" ? "GET" : std::string_view(request.method);
    for (const Route& route : routes)
        if (route.path == request.path && route.method == method) return (this->*route.answer)(request);
    return complaint(404, "unknown_path", "There is no " + request.path.substr(0, 200) + " here.");
}

http::Answer Api::health(const http::Request&) {
    if (!pool_.healthy())
        return complaint(503, "no_workers", "The workers have ended; the server must be started anew.");
    return json({{"status", "ok"}, {"workers", pool_.size()}});
}

http::Answer Api::version(const http::Request&) {
    return json({{"program", "frigana"}, {"version", FRIGANA_VERSION}});
}

// ------------------------------------------------------------------------------------------------------- calculations

http::Answer Api::calculated(std::string_view task, std::string_view about) {
    const workers::Answer answer = pool_.run(std::string(task) + '\n' + std::string(about));
    if (answer.end != workers::End::done) return complaintOf(answer);
    const std::size_t end = answer.text.find('\n');
    return {std::stoi(answer.text.substr(0, end)),
            std::string(jsonType),
            answer.text.substr(end + 1),
            {{"Cache-Control", "no-store"}},
            {}};
}

http::Answer Api::requests(const http::Request&) {
    static const std::string all = programs::requestsJson();
    return {200, std::string(jsonType), all, {{"Cache-Control", "no-store"}}, {}};
}

http::Answer Api::openApi(const http::Request&) {
    static const std::string all = openApiJson();
    return {200, std::string(jsonType), all, {{"Cache-Control", "no-store"}}, {}};
}

// The fluids of the installation are the same as long as the server runs; blends of one's own come and go.
http::Answer Api::fluids(const http::Request&) {
    const std::lock_guard lock(mutex_);
    std::error_code error;
    const auto changed = std::filesystem::last_write_time(catalogue::personalFolder(), error);
    if (fluids_.body.empty() || changed != blendsChanged_) {
        http::Answer answer = calculated(fluidsTask, "");
        if (answer.status != 200) return answer;
        fluids_ = std::move(answer);
        blendsChanged_ = changed;
    }
    return fluids_;
}

http::Answer Api::run(const http::Request& request) {
    return calculated(runTask, request.body);
}

http::Answer Api::chart(const http::Request& request) {
    return calculated(chartTask, request.body);
}

http::Answer Api::state(const http::Request& request) {
    return calculated(stateTask, request.body);
}

http::Answer Api::convert(const http::Request& request) {
    return calculated(convertTask, request.body);
}

http::Answer Api::study(const http::Request& request) {
    catalogue::Node description;
    std::vector<catalogue::Problem> problems = catalogue::readJson(request.body, description);
    std::shared_ptr<const studies::Study> study;
    try {
        if (problems.empty()) study = std::make_shared<studies::Study>(description, nullptr);
    } catch (const studies::Faulty& faulty) {
        problems = faulty.problems;
    }
    if (!problems.empty()) return complaint(400, "bad_study", problems.front().text);
    if (study->cases() > mostCasesOfAStudy)
        return complaint(400, "too_many_cases",
                         "A study has at most " + std::to_string(mostCasesOfAStudy) + " cases here; this one has " +
                             std::to_string(study->cases()) + ".");
    if (runningStudies_.load() >= mostStudiesAtOnce)
        return complaint(429, "too_many_studies",
                         "There are " + std::to_string(mostStudiesAtOnce) + " studies running; wait for one of them.");
    const auto stream = [this, study](const http::Write& write) {
        const Counted running(runningStudies_);
        streamStudy(pool_, *study, write);
    };
    return {200, "application/x-ndjson", "", {{"Cache-Control", "no-store"}}, stream};
}

}  // namespace frigana::serve
