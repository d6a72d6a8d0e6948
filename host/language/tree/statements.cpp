// SPDX-License-Identifier: MIT
#include "host/language/tree/statements.h"

#include <fmt/format.h>

#include <type_traits>
#include <utility>

#include "host/language/run/error_translation.h"
#include "host/language/run/runtime.h"
#include "host/runtime/text.h"

namespace quillbar::language {
namespace {

class Assignment final : public Statement {
 public:
  Assignment(LvaluePointer lvalue, ExpressionPointer value) : lvalue_(std::move(lvalue)), value_(std::move(value)) {}
  Flow Execute(Frame &frame) const override {
    lvalue_->Assign(frame, *value_);
    return Flow::kNext;
  }

 private:
  LvaluePointer lvalue_;
  ExpressionPointer value_;
};

/// An assignment of a number to a variable of the procedure, the commonest kind.
template <class Native>
class LocalAssignment final : public Statement {
 public:
  LocalAssignment(std::size_t slot, ExpressionPointer value) : slot_(slot), value_(std::move(value)) {}
  Flow Execute(Frame &frame) const override {
    const Native number = EvaluateAs<Native>(*value_, frame);
    if constexpr (std::is_same_v<Native, double>) {
      frame.cells[slot_].real = number;
    } else {
      frame.cells[slot_].integer = number;
    }
    return Flow::kNext;
  }

 private:
  std::size_t slot_;
  ExpressionPointer value_;
};

}  // namespace

StatementPointer MakeAssignment(LvaluePointer lvalue, ExpressionPointer value) {
  if (const auto *local = dynamic_cast<const LocalVariable *>(lvalue.get())) {
    const std::size_t slot = local->slot;
    if (local->representation == Representation::kInteger) {
      return std::make_unique<LocalAssignment<std::int64_t>>(slot, std::move(value));
    }
    if (local->representation == Representation::kReal) {
      return std::make_unique<LocalAssignment<double>>(slot, std::move(value));
    }
  }
  return std::make_unique<Assignment>(std::move(lvalue), std::move(value));
}

Flow TextAppend::Execute(Frame &frame) const {
  host::ObjectHandle owner;
  host::StringHandle text = text_->Storage(frame, owner)->Text();
  std::vector<host::StringHandle> added;
  std::size_t size = text.Bytes().size();
  for (const ExpressionPointer &part : added_) {
    added.push_back(part->EvaluateText(frame));
    size += added.back().Bytes().size();
  }
  if (size > Limits::Current().stringBytes) {
    frame.runtime.Raise(frame, span_, ExceptionKind::kOutOfMemory, TooLongString());
  }
  Cell &cell = *text_->Storage(frame, owner);
  // Unless a part has changed the variable, its own reference isn't needed any more.
  if (cell.text == text.Get()) cell.SetText({});
  const auto store = [&] { cell.SetText(std::move(text)); };
  try {
    TranslateErrors(frame, span_, [&] {
      for (const host::StringHandle &part : added) host::text::Append(text, part);
    });
  } catch (...) {
    store();
    throw;
  }
  store();
  return Flow::kNext;
}

Flow IfStatement::Execute(Frame &frame) const {
  for (const Branch &branch : branches) {
    if (branch.condition->EvaluateInteger(frame) != 0) return branch.body.Execute(frame);
  }
  return otherwise.Execute(frame);
}

Flow SelectStatement::Execute(Frame &frame) const {
  store->Execute(frame);
  const auto chosen = [&]() -> const Block & {
    for (const Case &candidate : cases) {
      for (const ExpressionPointer &test : candidate.tests) {
        if (test->EvaluateInteger(frame) != 0) return candidate.body;
      }
    }
    return otherwise;
  };
  return Leave(frame, chosen().Execute(frame)).value_or(Flow::kNext);
}

Flow LoopStatement::Execute(Frame &frame) const {
  for (;;) {
    if (before && before->EvaluateInteger(frame) == 0) return Flow::kNext;
    if (const std::optional<Flow> left = Leave(frame, body.Execute(frame))) return *left;
    if (after && after->EvaluateInteger(frame) == 0) return Flow::kNext;
  }
}

Flow IntegerFor::Execute(Frame &frame) const {
  const std::int64_t start = first->EvaluateInteger(frame);
  const std::int64_t end = last->EvaluateInteger(frame);
  const std::int64_t written = step ? step->EvaluateInteger(frame) : 1;
  const host::TypeKind kind = variable->type.StorageKind();
  const bool isUnsigned = kind == host::TypeKind::kUInt64;
  const bool isNarrow = host::BitWidth(kind) < 64;
  const bool goesDown = isDown != (written < 0);
  Cell &cell = variable->Find(frame);
  cell.integer = start;
  const auto passed = [&](std::int64_t a, std::int64_t b) {
    return isUnsigned ? static_cast<std::uint64_t>(a) > static_cast<std::uint64_t>(b) : a > b;
  };
  for (;;) {
    const std::int64_t current = cell.integer;
    if (goesDown ? passed(end, current) : passed(current, end)) return Flow::kNext;

    if (const Flow flow = body.Execute(frame); flow != Flow::kNext) {
      if (const std::optional<Flow> left = Leave(frame, flow)) return *left;
    }
    // The body may have changed the variable. A step beyond what the variable can hold ends the loop.
    std::int64_t next = 0;
    const bool leavesInt64 = isDown ? __builtin_sub_overflow(cell.integer, written, &next)
                                    : __builtin_add_overflow(cell.integer, written, &next);
    if (isUnsigned) {
      const auto from = static_cast<std::uint64_t>(cell.integer);
      const auto to = static_cast<std::uint64_t>(next);
      if (goesDown ? to > from : to < from) return Flow::kNext;
    } else if (leavesInt64 || (isNarrow && NarrowInteger(kind, next) != next)) {
      return Flow::kNext;
    }
    cell.integer = next;
  }
}

Flow RealFor::Execute(Frame &frame) const {
  const double start = first->EvaluateReal(frame);
  const double end = last->EvaluateReal(frame);
  const double written = step ? step->EvaluateReal(frame) : 1;
  const double change = isDown ? -written : written;
  const bool isSingle = variable->type.kind() == host::TypeKind::kSingle;
  Cell &cell = variable->Find(frame);
  cell.real = start;
  // Written so that not-a-number ends the loop.
  while (change < 0 ? cell.real >= end : cell.real <= end) {
    if (const std::optional<Flow> left = Leave(frame, body.Execute(frame))) return *left;
    cell.real = isSingle ? host::RoundToSingle(cell.real + change) : cell.real + change;
  }
  return Flow::kNext;
}

Flow ForEachStatement::Execute(Frame &frame) const {
  // The loop holds a reference to the array, so that it is safe whatever the body does.
  const host::ArrayHandle elements = list->EvaluateArray(frame);
  for (std::size_t i = 0; i < elements.Size(); ++i) {
    const host::Value element = elements.At(static_cast<std::int64_t>(i));
    variable->AssignValue(frame, element);
    if (const std::optional<Flow> left = Leave(frame, body.Execute(frame))) return *left;
  }
  return Flow::kNext;
}

Flow ResizeStatement::Execute(Frame &frame) const {
  host::ArrayHandle list = list_->EvaluateArray(frame);
  host::ArrayExtents extents{};
  std::int64_t total = 1;
  for (std::size_t i = 0; i < upperBounds_.size(); ++i) {
    const Expression &written = *upperBounds_[i];
    const std::int64_t bound = written.EvaluateInteger(frame);
    if (bound < -1) {
      frame.runtime.Raise(frame, written.span, ExceptionKind::kOutOfBounds,
                          fmt::format("the last index of an array can't be {}; -1 makes it empty", bound));
    }
    const std::int64_t most = Limits::Current().arrayElements;
    if (bound >= most || (total *= bound + 1) > most) {
      frame.runtime.Raise(frame, written.span, ExceptionKind::kOutOfMemory, TooManyElements());
    }
    extents[i] = static_cast<std::size_t>(bound + 1);
  }
  TranslateErrors(frame, upperBounds_.front()->span, [&] { list.ResizeAll(extents); });
  return Flow::kNext;
}

Flow TryStatement::Execute(Frame &frame) const {
  if (!hasFinally) return ExecuteCaught(frame);
  Flow flow = Flow::kNext;
  const void *target = nullptr;
  try {
    flow = ExecuteCaught(frame);
    target = frame.jumpTarget;
  } catch (const Raised &) {
    // A jump out of Finally replaces the exception, as a new exception would.
    const Flow last = finally.Execute(frame);
    if (last != Flow::kNext) return last;
    throw;
  } catch (const QuitRequest &) {
    finally.Execute(frame);
    throw;
  }
  const Flow last = finally.Execute(frame);
  if (last != Flow::kNext) return last;
  frame.jumpTarget = target;
  return flow;
}

Flow TryStatement::ExecuteCaught(Frame &frame) const {
  const Catch *handler = nullptr;
  try {
    return body.Execute(frame);
  } catch (Raised &raised) {
    const host::ClassInfo &actual =
        raised.object ? raised.object.Class() : frame.runtime.Host().Class(raised.className);
    for (const Catch &candidate : catches) {
      if (candidate.type != nullptr && !actual.IsSubclassOf(*candidate.type)) continue;
      handler = &candidate;
      if (handler->variable) {
        handler->variable->Find(frame).SetObject(frame.runtime.ExceptionObject(raised));
      }
      break;
    }
    if (handler == nullptr) throw;
  }
  return handler->body.Execute(frame);
}

Flow RaiseStatement::Execute(Frame &frame) const {
  Raised raised;
  raised.object = exception_->EvaluateObject(frame);
  if (raised.object.IsNil()) {
    frame.runtime.Raise(frame, exception_->span, ExceptionKind::kNilObject, "there is no exception to raise: Nil");
  }
  host::Host &host = frame.runtime.Host();
  raised.className = raised.object.Class().name;
  raised.message = host.Get(raised.object, "Message").Utf8();
  raised.number = host.Get(raised.object, "ErrorNumber").AsInteger();
  raised.trace = Runtime::Trace(frame, span_);
  throw raised;
}

}  // namespace quillbar::language
