// SPDX-License-Identifier: MIT
#include "host/program/watch/page_state.h"

#include <nlohmann/json.hpp>
#include <utility>

namespace quillbar::program {

std::string PageState(const WatchReport &report, const std::string &script, std::uint64_t revision,
                      const std::vector<std::string> &addresses) {
  using Json = nlohmann::ordered_json;
  Json documents = Json::array();
  for (std::size_t i = 0; i < report.documents.size(); ++i) {
    documents.push_back({{"name", report.documents[i].name}, {"address", addresses.at(i)}});
  }
  const Json state{{"revision", revision},         {"script", script},
                   {"running", report.isRunning},  {"status", report.status},
                   {"seconds", report.seconds},    {"output", report.output},
                   {"errors", report.errors},      {"hint", report.hint},
                   {"earlier", report.areEarlier}, {"documents", std::move(documents)}};
  return state.dump(-1, ' ', false, Json::error_handler_t::replace);
}

}  // namespace quillbar::program
