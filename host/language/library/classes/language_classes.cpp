// SPDX-License-Identifier: MIT
#include "host/language/library/classes/language_classes.h"

namespace quillbar::language {

void RegisterLanguageClasses(host::Host &host) {
  if (host.registry().FindClass("RuntimeException") != nullptr) return;
  RegisterExceptionClasses(host);
  for (ClassRecord *record : {&TextInputStreamRecord(), &TextOutputStreamRecord(), &BinaryStreamRecord(),
                              &DateTimeRecord(), &DateIntervalRecord(), &TimeZoneRecord(), &RandomRecord(),
                              &RowSetRecord(), &DatabaseRowRecord(), &DatabaseColumnRecord(), &SqliteDatabaseRecord(),
                              &StandardInputStreamRecord(), &StandardOutputStreamRecord()}) {
    host.Register(*record, true);
  }
  RegisterDictionaryClasses(host);
  RegisterJsonItem(host);
  host.Link();
}

}  // namespace quillbar::language
