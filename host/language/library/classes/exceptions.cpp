// SPDX-License-Identifier: MIT
#include "host/language/run/exceptions.h"

#include <array>
#include <cstdint>
#include <string>

#include "host/language/library/classes/language_classes.h"
#include "host/runtime/native_class.h"

namespace quillbar::language {
namespace {

using Self = Instance<"RuntimeException">;
namespace native = host::native;
using host::NativeClass;
using host::StringHandle;

struct ExceptionData {
  StringHandle message;
  std::int64_t number = 0;
};

ExceptionData &Of(Object self) { return NativeClass<ExceptionData>::Of(self); }

void Construct(Self *) {}
void ConstructWithMessage(Self *self, String message, Integer number) {
  Of(self).message = StringHandle(message);
  Of(self).number = number;
}

String Message(Self *self) { return native::Give(Of(self).message); }
void SetMessage(Self *self, std::intptr_t, String message) { Of(self).message = StringHandle(message); }
Integer ErrorNumber(Self *self) { return static_cast<Integer>(Of(self).number); }
void SetErrorNumber(Self *self, std::intptr_t, Integer number) { Of(self).number = number; }

using RuntimeExceptionMembers =
    Members<Methods<native::Method<"Constructor()", Construct>,
                    native::Method<"Constructor(message as String, errorNumber as Integer = 0)", ConstructWithMessage>>,
            Properties<native::Property<"Message", "String", Message, SetMessage>,
                       native::Property<"Reason", "String", Message, SetMessage>,
                       native::Property<"ErrorNumber", "Integer", ErrorNumber, SetErrorNumber>>>;

ClassRecord &RuntimeExceptionRecord() {
  return NativeClass<ExceptionData>::Record<RuntimeExceptionMembers>("RuntimeException");
}

}  // namespace

void RegisterExceptionClasses(host::Host &host) {
  ClassRecord &base = RuntimeExceptionRecord();
  host.Register(base, true);
  // The other kinds add nothing but their names.
  constexpr auto kLast = static_cast<std::size_t>(ExceptionKind::kJson);
  static std::array<ClassRecord, kLast + 1> records{};
  for (std::size_t kind = 1; kind <= kLast; ++kind) {
    ClassRecord &record = records[kind];
    record.version = kInterfaceVersion;
    record.name = ExceptionClass(static_cast<ExceptionKind>(kind)).data();
    record.superclass = base.name;
    record.interfaces = "";
    record.flags = kClassFlags;
    host.Register(record, true);
  }
}

}  // namespace quillbar::language
