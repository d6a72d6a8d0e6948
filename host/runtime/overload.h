// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <span>

#include "host/runtime/class_model.h"

/// The choice among overloads, for scripts and for callers in C++.
namespace quillbar::host {

/// The added cost of a call whose last arguments a ParamArray gathers.
inline constexpr int kListCost = 30;

/// How many parameters come before the one that gathers a list, or all when none does.
inline std::size_t FixedCount(std::span<const ParameterInfo> parameters) {
  return parameters.size() - (!parameters.empty() && parameters.back().isList ? 1 : 0);
}

/// The number of arguments that a call must give.
inline std::size_t RequiredCount(std::span<const ParameterInfo> parameters) {
  std::size_t count = 0;
  for (const ParameterInfo &parameter : parameters) count += parameter.optional || parameter.isList ? 0 : 1;
  return count;
}

/// The cost of a call with `count` arguments; nothing when it is impossible. `costOf(index, parameter)` is the cost of
/// one argument for a parameter, or nothing.
template <class CostOf>
std::optional<int> CallCost(std::span<const ParameterInfo> parameters, std::size_t count, CostOf costOf) {
  const std::size_t fixed = FixedCount(parameters);
  const bool takesList = fixed < parameters.size();
  if (count < RequiredCount(parameters) || (count > fixed && !takesList)) return std::nullopt;
  int total = takesList ? kListCost : 0;
  for (std::size_t i = 0; i < count; ++i) {
    const std::optional<int> cost = costOf(i, parameters[i < fixed ? i : fixed]);
    if (!cost) return std::nullopt;
    total += *cost;
  }
  return total;
}

/// The cheapest candidate; null when there is none.
template <class Candidate>
struct Choice {
  const Candidate *best = nullptr;
  int cost = 0;
  bool isAmbiguous = false;
};

/// `costOf(candidate)` is the cost of calling it, or nothing.
template <class Candidate, class CostOf>
Choice<Candidate> ChooseCheapest(std::span<const Candidate> candidates, CostOf costOf) {
  Choice<Candidate> choice;
  for (const Candidate &candidate : candidates) {
    const std::optional<int> cost = costOf(candidate);
    if (!cost || (choice.best != nullptr && *cost > choice.cost)) continue;
    choice.isAmbiguous = choice.best != nullptr && *cost == choice.cost;
    choice.best = &candidate;
    choice.cost = *cost;
  }
  return choice;
}

}  // namespace quillbar::host
