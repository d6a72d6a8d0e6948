// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/language/syntax/source_text.h"

/// The syntax tree: a script as it is written, before names and types are resolved. Every node knows its position in
/// the text.
namespace quillbar::language::syntax {

/// The name of a type: its parts between dots, as written ("Page", "PageSizeEnum").
struct TypeName {
  Span span;
  std::vector<std::string> parts;
  int rank = 0;  // of an array: how many dimensions "()", "(,)" or "(,,)" after it has
};

/// From where a member of a class may be used. What a module protects is used with the module's name before it.
enum class Access : std::uint8_t { kPublic, kProtected, kPrivate };

enum class ExpressionKind : std::uint8_t {
  kInteger,
  kReal,
  kText,
  kBoolean,
  kColor,
  kNil,
  kName,
  kMember,
  kCall,
  kNew,
  kUnary,
  kBinary,
  kIsA,
  kConditional,
  kPair,
  kAddressOf,
  kRaiseEvent,
};

struct Expression {
  Expression(ExpressionKind expressionKind, Span where) : kind(expressionKind), span(where) {}
  virtual ~Expression() = default;
  Expression(const Expression &) = delete;
  Expression &operator=(const Expression &) = delete;

  ExpressionKind kind;
  Span span;
  std::uint32_t height = 1;  // of the tree below, including this node
};

using ExpressionPointer = std::unique_ptr<Expression>;

/// `12`, `&hFF`, `&cFF8000` (as &hTTRRGGBB).
struct IntegerLiteral : Expression {
  IntegerLiteral(ExpressionKind literalKind, Span where, std::uint64_t literal)
      : Expression(literalKind, where), value(literal) {}
  std::uint64_t value;
};

struct RealLiteral : Expression {
  RealLiteral(Span where, double literal) : Expression(ExpressionKind::kReal, where), value(literal) {}
  double value;
};

struct TextLiteral : Expression {
  TextLiteral(Span where, std::string literal) : Expression(ExpressionKind::kText, where), value(std::move(literal)) {}
  std::string value;  // UTF-8
};

struct BooleanLiteral : Expression {
  BooleanLiteral(Span where, bool literal) : Expression(ExpressionKind::kBoolean, where), value(literal) {}
  bool value;
};

struct NilLiteral : Expression {
  explicit NilLiteral(Span where) : Expression(ExpressionKind::kNil, where) {}
};

struct Name : Expression {
  Name(Span where, std::string written) : Expression(ExpressionKind::kName, where), name(std::move(written)) {}
  std::string name;
};

/// `base.name`
struct Member : Expression {
  Member(Span where, ExpressionPointer object, std::string written, Span nameWhere)
      : Expression(ExpressionKind::kMember, where),
        base(std::move(object)),
        name(std::move(written)),
        nameSpan(nameWhere) {}
  ExpressionPointer base;
  std::string name;
  Span nameSpan;
};

/// `callee(arguments)`: a call, an element of an array or a conversion, which only the checker can tell apart.
struct Call : Expression {
  Call(Span where, ExpressionPointer called, std::vector<ExpressionPointer> list)
      : Expression(ExpressionKind::kCall, where), callee(std::move(called)), arguments(std::move(list)) {}
  ExpressionPointer callee;
  std::vector<ExpressionPointer> arguments;
};

/// `New Type(arguments)`
struct New : Expression {
  New(Span where, TypeName name, std::vector<ExpressionPointer> list)
      : Expression(ExpressionKind::kNew, where), type(std::move(name)), arguments(std::move(list)) {}
  TypeName type;
  std::vector<ExpressionPointer> arguments;
};

enum class UnaryOperator : std::uint8_t { kNegate, kPlus, kNot };

struct Unary : Expression {
  Unary(Span where, UnaryOperator what, ExpressionPointer of)
      : Expression(ExpressionKind::kUnary, where), operation(what), operand(std::move(of)) {}
  UnaryOperator operation;
  ExpressionPointer operand;
};

enum class BinaryOperator : std::uint8_t {
  kPower,
  kMultiply,
  kDivide,
  kIntegerDivide,
  kModulo,
  kAdd,
  kSubtract,
  kEqual,
  kNotEqual,
  kLess,
  kGreater,
  kLessEqual,
  kGreaterEqual,
  kIs,
  kAnd,
  kOr,
  kXor,
};

struct Binary : Expression {
  Binary(Span where, BinaryOperator what, Span operatorWhere, ExpressionPointer first, ExpressionPointer second)
      : Expression(ExpressionKind::kBinary, where),
        operation(what),
        operatorSpan(operatorWhere),
        left(std::move(first)),
        right(std::move(second)) {}
  BinaryOperator operation;
  Span operatorSpan;
  ExpressionPointer left;
  ExpressionPointer right;
};

/// `operand IsA Type`
struct IsA : Expression {
  IsA(Span where, ExpressionPointer object, TypeName name)
      : Expression(ExpressionKind::kIsA, where), operand(std::move(object)), type(std::move(name)) {}
  ExpressionPointer operand;
  TypeName type;
};

/// `If(condition, first, second)`
struct Conditional : Expression {
  Conditional(Span where, ExpressionPointer test, ExpressionPointer yes, ExpressionPointer no)
      : Expression(ExpressionKind::kConditional, where),
        condition(std::move(test)),
        first(std::move(yes)),
        second(std::move(no)) {}
  ExpressionPointer condition;
  ExpressionPointer first;
  ExpressionPointer second;
};

/// `left : right`
struct PairOf : Expression {
  PairOf(Span where, ExpressionPointer one, ExpressionPointer other)
      : Expression(ExpressionKind::kPair, where), left(std::move(one)), right(std::move(other)) {}
  ExpressionPointer left;
  ExpressionPointer right;
};

/// `AddressOf Method`, `AddressOf object.Method`
struct AddressOf : Expression {
  AddressOf(Span where, ExpressionPointer named)
      : Expression(ExpressionKind::kAddressOf, where), method(std::move(named)) {}
  ExpressionPointer method;
};

/// `RaiseEvent Name`, which is called like a method.
struct RaiseEvent : Expression {
  RaiseEvent(Span where, std::string event) : Expression(ExpressionKind::kRaiseEvent, where), name(std::move(event)) {}
  std::string name;
};

enum class StatementKind : std::uint8_t {
  kDeclare,
  kConstant,
  kAssign,
  kCall,
  kIf,
  kSelect,
  kFor,
  kForEach,
  kWhile,
  kDo,
  kExit,
  kContinue,
  kReturn,
  kRedim,
  kHandler,
  kTry,
  kRaise,
  kUsing,
};

struct Statement {
  Statement(StatementKind statementKind, Span where) : kind(statementKind), span(where) {}
  virtual ~Statement() = default;
  Statement(const Statement &) = delete;
  Statement &operator=(const Statement &) = delete;

  StatementKind kind;
  Span span;  // of the statement's first line
};

using StatementPointer = std::unique_ptr<Statement>;
using Block = std::vector<StatementPointer>;

/// `Dim a, b(9) As Integer`, one group of names that share a type.
struct Declare : Statement {
  explicit Declare(Span where) : Statement(StatementKind::kDeclare, where) {}
  struct Variable {
    Span span;
    std::string name;
    int rank = 0;                                // of an array: how many dimensions it has
    std::vector<ExpressionPointer> upperBounds;  // of an array written as name(bound, …)
  };
  std::vector<Variable> variables;
  TypeName type;
  bool isStatic = false;
  ExpressionPointer initial;  // shared by all names; `As New T(…)` becomes a New expression here
};

/// `Const kName As Type = value`; without a type the constant has the value's.
struct Constant : Statement {
  explicit Constant(Span where) : Statement(StatementKind::kConstant, where) {}
  std::string name;
  Span nameSpan;
  std::optional<TypeName> type;
  ExpressionPointer value;
};

/// `target = value`, or with an operator: `target += value`.
struct Assign : Statement {
  explicit Assign(Span where) : Statement(StatementKind::kAssign, where) {}
  ExpressionPointer target;
  std::optional<BinaryOperator> operation;
  Span operatorSpan;
  ExpressionPointer value;
};

/// A call as a statement of its own; `Call` before it allows a result to be dropped.
struct CallStatement : Statement {
  explicit CallStatement(Span where) : Statement(StatementKind::kCall, where) {}
  ExpressionPointer call;
  bool dropsResult = false;
};

struct If : Statement {
  explicit If(Span where) : Statement(StatementKind::kIf, where) {}
  struct Branch {
    ExpressionPointer condition;
    Block body;
  };
  std::vector<Branch> branches;
  Block otherwise;
};

struct Select : Statement {
  explicit Select(Span where) : Statement(StatementKind::kSelect, where) {}
  /// `first`, `first To last`, `Is operation first` or `IsA type`.
  struct Test {
    Span span;
    ExpressionPointer first;
    ExpressionPointer last;
    BinaryOperator operation = BinaryOperator::kEqual;
    std::optional<TypeName> type;
  };
  struct Case {
    std::vector<Test> tests;
    Block body;
  };
  ExpressionPointer subject;
  std::vector<Case> cases;
  Block otherwise;
};

struct For : Statement {
  explicit For(Span where) : Statement(StatementKind::kFor, where) {}
  Span variableSpan;
  std::string variable;
  std::optional<TypeName> type;  // declared here
  ExpressionPointer first;
  ExpressionPointer last;
  ExpressionPointer step;
  bool isDown = false;
  Block body;
};

struct ForEach : Statement {
  explicit ForEach(Span where) : Statement(StatementKind::kForEach, where) {}
  Span variableSpan;
  std::string variable;
  std::optional<TypeName> type;
  ExpressionPointer list;
  Block body;
};

struct While : Statement {
  explicit While(Span where) : Statement(StatementKind::kWhile, where) {}
  ExpressionPointer condition;
  Block body;
};

/// `Do [While|Until before] … Loop [While|Until after]`
struct Do : Statement {
  explicit Do(Span where) : Statement(StatementKind::kDo, where) {}
  struct Test {
    ExpressionPointer condition;
    bool isUntil = false;
  };
  Test before;
  Test after;
  Block body;
};

enum class JumpTarget : std::uint8_t { kInnermost, kFor, kWhile, kDo, kSub, kFunction, kSelect };

/// `Exit` and `Continue`; with `For`, a loop may be named by its variable.
struct Jump : Statement {
  Jump(StatementKind jumpKind, Span where) : Statement(jumpKind, where) {}
  JumpTarget target = JumpTarget::kInnermost;
  std::string variable;
};

struct Return : Statement {
  explicit Return(Span where) : Statement(StatementKind::kReturn, where) {}
  ExpressionPointer value;
};

/// `Redim list(upperBounds)`
struct Redim : Statement {
  explicit Redim(Span where) : Statement(StatementKind::kRedim, where) {}
  ExpressionPointer list;
  std::vector<ExpressionPointer> upperBounds;
};

/// `AddHandler object.Event, AddressOf Method` and `RemoveHandler`.
struct Handler : Statement {
  explicit Handler(Span where) : Statement(StatementKind::kHandler, where) {}
  bool adds = true;
  ExpressionPointer event;
  ExpressionPointer procedure;
};

struct Try : Statement {
  explicit Try(Span where) : Statement(StatementKind::kTry, where) {}
  struct Catch {
    Span span;
    std::string variable;  // empty: the exception isn't named
    std::optional<TypeName> type;
    Block body;
  };
  Block body;
  std::vector<Catch> catches;
  Block finally;
};

struct Raise : Statement {
  explicit Raise(Span where) : Statement(StatementKind::kRaise, where) {}
  ExpressionPointer exception;
};

struct Parameter {
  Span span;
  std::string name;
  TypeName type;
  bool byReference = false;
  bool isOptional = false;
  bool isList = false;      // ParamArray
  bool isExtended = false;  // Extends: the value before the dot
  bool isAssigned = false;  // Assigns: the value after "="
  ExpressionPointer defaultValue;
};

struct Procedure {
  Span span;  // of its first line
  Span nameSpan;
  Span endSpan;
  std::string name;
  std::vector<Parameter> parameters;
  std::optional<TypeName> result;  // nothing: a Sub
  Block body;
};

struct Enumeration {
  struct Value {
    Span span;
    std::string name;
    ExpressionPointer value;  // null: one more than the last
  };
  Access access = Access::kPublic;
  Span span;
  Span nameSpan;
  std::string name;
  std::optional<TypeName> type;
  std::vector<Value> values;
};

/// What is written before a member of a class or module.
struct Modifiers {
  Access access = Access::kPublic;
  bool isShared = false;
  bool isHandler = false;  // in a class of a project: the method handles an event
};

enum class ClassKind : std::uint8_t { kClass, kInterface, kModule };

/// A class, an interface or a module. An interface has methods without bodies alone.
struct Class {
  /// `Property name As Type = default`, or with `Get` and `Set` in lines of their own.
  struct Property {
    Modifiers modifiers;
    Declare::Variable variable;
    TypeName type;
    ExpressionPointer initial;
    std::unique_ptr<Procedure> getter;
    std::unique_ptr<Procedure> setter;  // with the parameter `value`
  };
  struct Method {
    Modifiers modifiers;
    std::unique_ptr<Procedure> procedure;
  };
  struct Constant {
    Modifiers modifiers;
    StatementPointer constant;
  };
  ClassKind kind = ClassKind::kClass;
  Span span;
  Span nameSpan;
  Modifiers modifiers;               // of what a module contains
  const Class *container = nullptr;  // the module that it is declared in
  std::string name;
  std::optional<TypeName> superclass;
  std::vector<TypeName> interfaces;  // that it implements; of an interface, those that it extends
  std::vector<std::unique_ptr<Enumeration>> enumerations;
  std::vector<Property> properties;
  std::vector<Method> methods;
  std::vector<Constant> constants;
  std::vector<std::unique_ptr<Procedure>> events;  // without bodies
};

/// `Delegate Sub Name(parameters)`: a type whose values are methods.
struct Delegate {
  Access access = Access::kPublic;
  const Class *container = nullptr;  // the class or module that it is declared in
  std::unique_ptr<Procedure> head;
};

/// `Using Module`: the module's members are known by their names alone, in the whole script or, within a block, in what
/// follows there.
struct Using : Statement {
  Using(Span where, TypeName named) : Statement(StatementKind::kUsing, where), module(std::move(named)) {}
  TypeName module;
};

/// A whole script: what runs from top to bottom, and what is declared beside it.
struct Script {
  Block body;
  std::vector<std::unique_ptr<Procedure>> procedures;
  std::vector<std::unique_ptr<Enumeration>> enumerations;
  std::vector<std::unique_ptr<Class>> classes;  // also those inside modules, after their module
  std::vector<std::unique_ptr<Delegate>> delegates;
  std::vector<std::unique_ptr<Using>> usings;
};

/// An operator as it is written in scripts.
std::string_view Spelling(BinaryOperator operation);

}  // namespace quillbar::language::syntax
