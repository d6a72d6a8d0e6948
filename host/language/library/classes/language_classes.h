// SPDX-License-Identifier: MIT
#pragma once

#include "host/runtime/host.h"

namespace quillbar::language {

/// Registers the classes that belong to the language with a host: exceptions, text and binary streams,
/// standard streams, dates, databases, Random, Dictionary, Pair, JSONItem. Does nothing when the host has them already.
void RegisterLanguageClasses(host::Host &host);

/// The records, in the order in which they must be registered.
void RegisterExceptionClasses(host::Host &host);
void RegisterDictionaryClasses(host::Host &host);
void RegisterJsonItem(host::Host &host);
ClassRecord &TextInputStreamRecord();
ClassRecord &TextOutputStreamRecord();
ClassRecord &BinaryStreamRecord();
ClassRecord &DateTimeRecord();
ClassRecord &DateIntervalRecord();
ClassRecord &TimeZoneRecord();
ClassRecord &RandomRecord();
ClassRecord &RowSetRecord();
ClassRecord &DatabaseRowRecord();
ClassRecord &DatabaseColumnRecord();
ClassRecord &SqliteDatabaseRecord();
ClassRecord &StandardInputStreamRecord();
ClassRecord &StandardOutputStreamRecord();

}  // namespace quillbar::language
