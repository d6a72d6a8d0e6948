// SPDX-License-Identifier: MIT
#include "host/language/check/procedure_checker.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "host/language/check/statement_checker.h"

namespace quillbar::language {
namespace {

ParameterInfo MakeParameter(Checker &checker, const syntax::Parameter &written,
                            const std::vector<ParameterInfo> &before) {
  ParameterInfo parameter;
  parameter.name = written.name;
  parameter.type = checker.ResolveType(written.type);
  parameter.byRef = written.byReference;
  parameter.optional = written.isOptional;
  parameter.isList = written.isList;
  if (!before.empty() && before.back().isList) checker.Fail(written.span, "nothing can follow a ParamArray");
  if (written.isList) {
    if (written.byReference || written.isOptional)
      checker.Fail(written.span, "a ParamArray can't be ByRef or Optional");
    parameter.type = parameter.type.ArrayOf();
  }
  if (written.byReference && written.isOptional) checker.Fail(written.span, "a ByRef parameter can't be Optional");
  if (!before.empty() && before.back().optional && !written.isOptional && !written.isList) {
    checker.Fail(written.span, "after an Optional parameter all others must be Optional too");
  }
  if (!parameter.type.IsArray()) parameter.defaultValue = host::Value::Zero(parameter.type);
  if (!written.defaultValue) return parameter;
  const ExpressionPointer value = CheckValue(checker, *written.defaultValue, parameter.type,
                                             fmt::format("the default value of \"{}\"", written.name));
  if (!value->IsConstant()) checker.Fail(value->span, "a default value is made of literals, constants and operators");
  parameter.defaultValue = checker.ConstantValue(*value);
  return parameter;
}

}  // namespace

void EnterHead(Checker &checker, const syntax::Procedure &written, host::MethodInfo &head) {
  head.name = written.name;
  for (const syntax::Parameter &parameter : written.parameters) {
    checker.Recover([&] {
      const bool isFirst = &parameter == &written.parameters.front();
      const bool isLast = &parameter == &written.parameters.back();
      if (parameter.isExtended && (!isFirst || (head.owner != nullptr && !IsModule(head.owner)))) {
        checker.Fail(parameter.span, "\"Extends\" is for the first parameter of a Sub or Function outside of classes");
      }
      if (parameter.isAssigned && (!isLast || written.result)) {
        checker.Fail(parameter.span, "\"Assigns\" is for the last parameter of a Sub");
      }
      head.isExtension = head.isExtension || parameter.isExtended;
      head.isAssignment = head.isAssignment || parameter.isAssigned;
      head.parameters.push_back(MakeParameter(checker, parameter, head.parameters));
    });
  }
  checker.Recover([&] {
    if (written.result) head.result = checker.ResolveType(*written.result);
  });
  Procedure &procedure = checker.program.procedures.emplace_back();
  procedure.name = head.owner == nullptr ? written.name : fmt::format("{}.{}", head.owner->name, written.name);
  if (head.owner != nullptr && !head.isShared) {
    procedure.firstParameter = 2;
    procedure.owningCells.push_back({1, Representation::kObject});
  }
  procedure.span = written.span;
  procedure.nameSpan = written.nameSpan;
  procedure.result = head.result;
  const Representation representation = RepresentationOf(head.result);
  if (IsOwning(representation)) procedure.owningCells.push_back({0, representation});
  head.code = &procedure;
}

void RefuseSameSignature(Checker &checker, const host::MethodInfo &head,
                         const std::vector<const host::MethodInfo *> &others) {
  for (const host::MethodInfo *other : others) {
    if (!std::ranges::equal(other->parameters, head.parameters, {}, &ParameterInfo::type, &ParameterInfo::type))
      continue;
    checker.Fail(CodeOf(head).nameSpan,
                 fmt::format("\"{}\" with these parameters is declared already in {}", head.name,
                             checker.source.DescribeLine(CodeOf(*other).nameSpan.begin, CodeOf(head).nameSpan.begin)));
  }
}

void CheckBody(Checker &checker, const syntax::Procedure &written, const host::MethodInfo &head) {
  checker.procedure = &CodeOf(head);
  checker.resultType = head.result;
  checker.selfClass = head.owner;
  checker.hasSelf = !head.isShared;
  checker.procedure->cellCount = checker.procedure->firstParameter + head.parameters.size();
  const Checker::BlockScope scope(checker);
  for (std::size_t i = 0; i < head.parameters.size(); ++i) {
    const ParameterInfo &parameter = head.parameters[i];
    Symbol symbol;
    symbol.kind = parameter.byRef ? Symbol::Kind::kReference : Symbol::Kind::kLocal;
    symbol.name = parameter.name;
    symbol.span = written.parameters[std::min(i, written.parameters.size() - 1)].span;
    symbol.type = parameter.type;
    symbol.slot = i + checker.procedure->firstParameter;
    const Representation representation = RepresentationOf(parameter.type);
    if (IsOwning(representation) && !parameter.byRef) {
      checker.procedure->owningCells.push_back({symbol.slot, representation});
    }
    checker.Recover([&] { checker.Declare(std::move(symbol)); });
  }
  CheckStatements(checker, written.body, checker.procedure->body);
  checker.procedure = &checker.program.main;
  checker.resultType = {};
  checker.selfClass = nullptr;
  checker.hasSelf = false;
}

}  // namespace quillbar::language
