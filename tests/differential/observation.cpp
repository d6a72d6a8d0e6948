// SPDX-License-Identifier: MIT
#include "tests/differential/observation.h"

#include <fmt/format.h>

#include <cmath>

namespace quillbar::differential {

namespace {

constexpr const char *kGetterNames[] = {"Width",
                                        "Height",
                                        "TransformCoordinates",
                                        "GraphicsMode",
                                        "FillColor",
                                        "StrokeColor",
                                        "LineWidth",
                                        "LineCapType",
                                        "LineJoinType",
                                        "TextLeading",
                                        "TextRise",
                                        "WordSpace",
                                        "TextRenderingMode",
                                        "SuggestedTextLeading()",
                                        "x of GetCurrentTextPosition",
                                        "y of GetCurrentTextPosition",
                                        "LastErrorNumber",
                                        "LastErrorDetailNumber"};
static_assert(std::size(kGetterNames) == kGetterCount);

std::string Describe(const std::vector<Event> &events) {
  std::string text;
  for (const Event &event : events) {
    text += fmt::format("{}{}/{} after {}/{}", text.empty() ? "" : ", ", event.number, event.detail, event.numberBefore,
                        event.detailBefore);
  }
  return text.empty() ? "none" : text;
}

std::string Describe(const char *what, const Reading &plugin, const Reading &reference) {
  return fmt::format("{}: the plugin's {:.9g}, the reference's {:.9g} (tolerance {:.3g})", what, plugin.value,
                     reference.value, reference.tolerance);
}

}  // namespace

const char *NameOf(Getter getter) { return kGetterNames[static_cast<std::size_t>(getter)]; }

bool IsSame(const Reading &plugin, const Reading &reference) {
  if (!reference.isComparable) return true;
  if (std::isnan(plugin.value) || std::isnan(reference.value))
    return std::isnan(plugin.value) && std::isnan(reference.value);
  return plugin.value == reference.value || std::fabs(plugin.value - reference.value) <= reference.tolerance;
}

std::optional<std::string> Difference(const Observation &plugin, const Observation &reference) {
  if (plugin.events != reference.events) {
    return fmt::format("events: the plugin's {}, the reference's {}", Describe(plugin.events),
                       Describe(reference.events));
  }
  if (plugin.results.size() != reference.results.size()) return "one side returned more numbers";
  for (std::size_t index = 0; index < plugin.results.size(); ++index) {
    if (!IsSame(plugin.results[index], reference.results[index])) {
      return Describe(index == 0 ? "first result" : "second result", plugin.results[index], reference.results[index]);
    }
  }
  for (std::size_t index = 0; index < kGetterCount; ++index) {
    if (!IsSame(plugin.getters[index], reference.getters[index]))
      return Describe(kGetterNames[index], plugin.getters[index], reference.getters[index]);
  }
  return std::nullopt;
}

}  // namespace quillbar::differential
