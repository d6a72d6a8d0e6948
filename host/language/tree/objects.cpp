// SPDX-License-Identifier: MIT
#include "host/language/tree/objects.h"

#include <utility>

#include "host/language/run/error_translation.h"
#include "host/language/run/runtime.h"
#include "host/language/tree/procedure_call.h"
#include "host/runtime/interruption.h"

namespace quillbar::language {
namespace {

/// Runs what the levels of a class do for a new object, superclasses first.
void Initialize(Frame &frame, Span span, const host::ClassInfo *info, const host::ObjectHandle &object) {
  const ScriptClass *part = ScriptPartOf(info);
  if (part == nullptr) return;
  Initialize(frame, span, info->superclass, object);
  CallWithValues(frame.runtime, &frame, span, part->initializer, object, {}, {});
}

/// A subclass's handler of an event comes before its superclass's.
void BindHandlers(Frame &frame, const host::ClassInfo *info, const host::ObjectHandle &object) {
  const ScriptClass *part = ScriptPartOf(info);
  if (part == nullptr) return;
  BindHandlers(frame, info->superclass, object);
  for (const ScriptClass::Handler &handler : part->handlers) {
    frame.runtime.Host().SetEventHandler(object, *handler.event,
                                         MakeEventHandler(frame.runtime, CodeOf(*handler.method), *handler.event));
  }
}

}  // namespace

Cell &FieldLvalue::CellOf(Object object) const { return FieldsOf(object, *property_.owner)[property_.slot]; }

Object FieldLvalue::BorrowOwner(Frame &frame, host::ObjectHandle &keeper) const {
  Object owner = object_->BorrowObject(frame, keeper);
  if (owner == nullptr) RaiseUsedOnNil(frame, span, property_.name);
  return owner;
}

std::int64_t FieldLvalue::EvaluateInteger(Frame &frame) const {
  host::ObjectHandle keeper;
  return CellOf(BorrowOwner(frame, keeper)).integer;
}
double FieldLvalue::EvaluateReal(Frame &frame) const {
  host::ObjectHandle keeper;
  return CellOf(BorrowOwner(frame, keeper)).real;
}
host::StringHandle FieldLvalue::EvaluateText(Frame &frame) const {
  host::ObjectHandle keeper;
  return CellOf(BorrowOwner(frame, keeper)).Text();
}
host::ObjectHandle FieldLvalue::EvaluateObject(Frame &frame) const {
  host::ObjectHandle keeper;
  return CellOf(BorrowOwner(frame, keeper)).ObjectValue();
}
host::ArrayHandle FieldLvalue::EvaluateArray(Frame &frame) const {
  host::ObjectHandle keeper;
  return host::ArrayHandle(ArrayIn(CellOf(BorrowOwner(frame, keeper)), type));
}
host::Value FieldLvalue::EvaluateVariant(Frame &frame) const {
  host::ObjectHandle keeper;
  return CellOf(BorrowOwner(frame, keeper)).VariantValue();
}

Object FieldLvalue::BorrowObject(Frame &frame, host::ObjectHandle &keeper) const {
  // An owner that is stored nowhere goes with its keeper, and then what it holds needs a reference.
  host::ObjectHandle ownerKeeper;
  Object object = CellOf(BorrowOwner(frame, ownerKeeper)).object;
  if (ownerKeeper) keeper = host::ObjectHandle(object);
  return object;
}

Array FieldLvalue::BorrowArray(Frame &frame, host::ArrayHandle &keeper) const {
  host::ObjectHandle ownerKeeper;
  Array array = ArrayIn(CellOf(BorrowOwner(frame, ownerKeeper)), type);
  if (ownerKeeper) keeper = host::ArrayHandle(array);
  return array;
}

void FieldLvalue::Assign(Frame &frame, const Expression &value) const {
  // The object comes before the value, which may run code that changes where the object was found.
  host::ObjectHandle keeper;
  Object owner = BorrowOwner(frame, keeper);
  if (IsOwning(representation) || !value.isPlain) keeper = host::ObjectHandle(owner);
  StoreInCell(frame, value, CellOf(owner));
}

void FieldLvalue::AssignValue(Frame &frame, const host::Value &value) const {
  const host::ObjectHandle owner = ObjectOrRaise(frame, object_, span, property_.name);
  StoreInCell(value, type, CellOf(owner.Get()));
}

LvaluePointer MakeProperty(Span span, const host::PropertyInfo &property, ExpressionPointer object) {
  if (!property.isField) {
    return std::make_unique<PropertyLvalue>(span, property, property.isShared ? nullptr : std::move(object));
  }
  if (property.isShared) return std::make_unique<GlobalVariable>(property.type, span, property.slot);
  return std::make_unique<FieldLvalue>(span, property, std::move(object));
}

void AssignsLvalue::AssignValue(Frame &frame, const host::Value &value) const {
  const host::ObjectHandle self = ObjectOrRaise(frame, object_, span, method_.name);
  std::vector<host::Value> values = EvaluateAll(frame, arguments_);
  values.push_back(value);
  const host::MemberCode *code = self ? self.Class().dispatch[method_.slot] : method_.code;
  CallWithValues(frame.runtime, &frame, span, static_cast<const Procedure &>(*code), self, method_.parameters, values);
}

host::ObjectHandle NewScriptObject::Compute(Frame &frame) const {
  std::vector<host::Value> values = EvaluateAll(frame, arguments_);
  host::Host &host = frame.runtime.Host();
  const Runtime::PluginCall call(frame.runtime, frame, span);
  host::ObjectHandle object = TranslateErrors(frame, span, [&] {
    host::ObjectHandle made = host.Create(info_, nullptr, {});
    BindHandlers(frame, &info_, made);
    return made;
  });
  Initialize(frame, span, &info_, object);
  if (constructor_ == nullptr) return object;
  if (constructor_->code != nullptr) {
    CallWithValues(frame.runtime, &frame, span, CodeOf(*constructor_), object, constructor_->parameters, values);
  } else {
    TranslateErrors(frame, span, [&] { host.Invoke(*constructor_, object, values); });
  }
  return object;
}

ObjectLives::ObjectLives(Runtime &runtime, Program &program) : runtime_(runtime), program_(program) {
  for (ScriptClass &part : program_.classes) {
    part.info->clear = [&part](Object object) {
      for (std::size_t i = 0; i < part.fields.size(); ++i) FieldsOf(object, *part.info)[i].Clear(part.fields[i]);
    };
    part.info->finalize = [&runtime, &part](Object object) {
      const host::ObjectHandle self(object);
      for (const host::ClassInfo *level = part.info; level != nullptr; level = level->superclass) {
        const ScriptClass *of = ScriptPartOf(level);
        if (of == nullptr || of->destructor == nullptr) continue;
        try {
          CallWithValues(runtime, nullptr, {}, *of->destructor, self, {}, {});
        } catch (const Raised &) {
          // Nobody could catch it: an object goes at any place.
        } catch (const QuitRequest &) {
          // The same.
        } catch (const host::Interrupted &) {
          // The next statement follows the interruption.
        }
      }
    };
  }
}

ObjectLives::~ObjectLives() {
  runtime_.ReleaseVariables();
  runtime_.Host().ClearScriptObjects();
  for (ScriptClass &part : program_.classes) {
    part.info->clear = nullptr;
    part.info->finalize = nullptr;
  }
}

}  // namespace quillbar::language
