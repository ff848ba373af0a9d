#include "Complaint.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <string>

namespace frigana::serve {

http::Answer complaint(int status, std::string_view code, std::string_view text, std::string_view where) {
    nlohmann::ordered_json error = {{"code", code}, {"text", text}};
    while (!where.empty()) {
        const std::string_view line = where.substr(0, where.find('\n'));
        where.remove_prefix(std::min(where.size(), line.size() + 1));
        error["where"].push_back(line);
    }
    const nlohmann::ordered_json all = {{"error", error}};
    // Words of a request come back in it, and they may be any bytes.
    using Handler = nlohmann::ordered_json::error_handler_t;
    return {status,
            std::string(jsonType),
            all.dump(2, ' ', false, Handler::replace) + "\n",
            {{"Cache-Control", "no-store"}},
            {}};
}

http::Answer complaintOf(const workers::Answer& answer) {
    using workers::End;
    int status = 500;
    if (answer.end == End::tooSlow) status = 504;
    if (answer.end == End::cancelled || answer.end == End::stopped || answer.end == End::noWorker) status = 503;
    std::string code(nameOf(answer.end));
    std::ranges::replace(code, ' ', '_');
    return complaint(status, code, answer.text, answer.where);
}

}  // namespace frigana::serve
