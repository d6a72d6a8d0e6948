// SPDX-License-Identifier: MIT
#include "host/language/tree/code.h"

#include <stdexcept>

#include "host/language/run/runtime.h"

namespace quillbar::language {
namespace {

// The checker gives every node a consumer that asks for its representation; anything else is a bug of the checker.
[[noreturn]] void FailWrongEvaluator() { throw std::logic_error("an expression was evaluated as another type"); }

}  // namespace

void Block::FollowInterruption(const Frame &frame) const {
  if (place_.end == 0) return;
  frame.runtime.NoteEnd(frame, place_);
  throw host::Interrupted();
}

void Block::RaiseOutOfMemory(const Frame &frame) const {
  if (place_.end == 0) throw;
  frame.runtime.Raise(frame, place_, ExceptionKind::kOutOfMemory, "there is not enough memory");
}

std::int64_t Expression::EvaluateInteger(Frame &) const { FailWrongEvaluator(); }
double Expression::EvaluateReal(Frame &) const { FailWrongEvaluator(); }
host::StringHandle Expression::EvaluateText(Frame &) const { FailWrongEvaluator(); }
host::ObjectHandle Expression::EvaluateObject(Frame &) const { FailWrongEvaluator(); }
host::ArrayHandle Expression::EvaluateArray(Frame &) const { FailWrongEvaluator(); }
host::Value Expression::EvaluateVariant(Frame &) const { FailWrongEvaluator(); }

host::Value Expression::Evaluate(Frame &frame) const {
  switch (representation) {
    case Representation::kNone:
      Run(frame);
      return {};
    case Representation::kInteger:
      return host::Value::OfInteger(type, EvaluateInteger(frame));
    case Representation::kReal:
      return host::Value::OfReal(type, EvaluateReal(frame));
    case Representation::kText:
      return EvaluateText(frame);
    case Representation::kObject:
      return EvaluateObject(frame);
    case Representation::kArray:
      return EvaluateArray(frame);
    case Representation::kVariant:
      return EvaluateVariant(frame);
  }
  return {};
}

void Expression::Run(Frame &frame) const {
  switch (representation) {
    case Representation::kNone:
      FailWrongEvaluator();
    case Representation::kInteger:
      EvaluateInteger(frame);
      break;
    case Representation::kReal:
      EvaluateReal(frame);
      break;
    case Representation::kText:
      EvaluateText(frame);
      break;
    case Representation::kObject:
      EvaluateObject(frame);
      break;
    case Representation::kArray:
      EvaluateArray(frame);
      break;
    case Representation::kVariant:
      EvaluateVariant(frame);
      break;
  }
}

}  // namespace quillbar::language
