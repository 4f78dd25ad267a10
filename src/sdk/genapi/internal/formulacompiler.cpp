// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/internal/formulacompiler.h"

#include "genapi/exceptions.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

namespace GenApi
{
namespace Internal
{
namespace
{

constexpr std::size_t kMaxNesting = 200;        // brackets, functions, prefixes, branches, named sub-expressions
constexpr std::size_t kMaxInstructions = 65536; // with all named sub-expressions in place
constexpr double kPi = 3.14159265358979323846;
constexpr double kE = 2.71828182845904523536;

struct SBinaryOperator
{
    const char* text;
    EFormulaOp op;
    std::size_t level; // 0 binds loosest
};

constexpr std::size_t kBinaryLevels = 7;
constexpr std::array<SBinaryOperator, 16> kBinaryOperators = {{{"|", EFormulaOp::BitOr, 0},
                                                               {"^", EFormulaOp::BitXor, 1},
                                                               {"&", EFormulaOp::BitAnd, 2},
                                                               {"=", EFormulaOp::Equal, 3},
                                                               {"<>", EFormulaOp::NotEqual, 3},
                                                               {"<", EFormulaOp::Less, 4},
                                                               {">", EFormulaOp::Greater, 4},
                                                               {"<=", EFormulaOp::LessEqual, 4},
                                                               {">=", EFormulaOp::GreaterEqual, 4},
                                                               {"<<", EFormulaOp::ShiftLeft, 5},
                                                               {">>", EFormulaOp::ShiftRight, 5},
                                                               {"+", EFormulaOp::Add, 6},
                                                               {"-", EFormulaOp::Subtract, 6},
                                                               {"*", EFormulaOp::Multiply, 7},
                                                               {"/", EFormulaOp::Divide, 7},
                                                               {"%", EFormulaOp::Remainder, 7}}};

struct SFunction
{
    const char* name;
    EFormulaOp op;
};

constexpr std::array<SFunction, 17> kFunctions = {{{"SGN", EFormulaOp::Sgn},
                                                   {"NEG", EFormulaOp::Negate},
                                                   {"ATAN", EFormulaOp::Atan},
                                                   {"COS", EFormulaOp::Cos},
                                                   {"SIN", EFormulaOp::Sin},
                                                   {"TAN", EFormulaOp::Tan},
                                                   {"ABS", EFormulaOp::Abs},
                                                   {"EXP", EFormulaOp::Exp},
                                                   {"LN", EFormulaOp::Ln},
                                                   {"LG", EFormulaOp::Lg},
                                                   {"SQRT", EFormulaOp::Sqrt},
                                                   {"TRUNC", EFormulaOp::Trunc},
                                                   {"FLOOR", EFormulaOp::Floor},
                                                   {"CEIL", EFormulaOp::Ceil},
                                                   {"ROUND", EFormulaOp::Round},
                                                   {"ASIN", EFormulaOp::Asin},
                                                   {"ACOS", EFormulaOp::Acos}}};

int StackEffect(EFormulaOp op)
{
    switch (op)
    {
    case EFormulaOp::PushConstant:
    case EFormulaOp::PushVariable:
        return 1;
    case EFormulaOp::Jump:
    case EFormulaOp::BitNot:
    case EFormulaOp::Negate:
    case EFormulaOp::Truth:
        return 0;
    case EFormulaOp::RoundDigits:
    case EFormulaOp::JumpIfFalse:
    case EFormulaOp::AndJump:
    case EFormulaOp::OrJump:
        return -1;
    default:
        return op >= EFormulaOp::Add && op <= EFormulaOp::GreaterEqual ? -1 : 0;
    }
}

} // namespace

/** Counts one level of nesting for the life of the object; refuses what is too deep for the processor's stack. */
class CFormulaCompiler::CNesting
{
public:
    explicit CNesting(CFormulaCompiler& compiler) : m_compiler(compiler)
    {
        if (m_compiler.m_nesting >= kMaxNesting)
        {
            m_compiler.Fail("formula nested deeper than " + std::to_string(kMaxNesting) + " levels",
                            m_compiler.m_source->token.position);
        }
        ++m_compiler.m_nesting;
    }
    ~CNesting() { --m_compiler.m_nesting; }
    CNesting(const CNesting&) = delete;
    CNesting& operator=(const CNesting&) = delete;

private:
    CFormulaCompiler& m_compiler;
};

CFormulaCompiler::SSource::SSource(const std::string& sourceText, std::uint16_t sourceIndex)
    : text(sourceText), index(sourceIndex), lexer(sourceText), token(lexer.Next())
{
}

CFormulaCompiler::CFormulaCompiler(EFormulaKind kind, const std::map<std::string, std::string>& namedSubExpressions,
                                   const std::map<std::string, SFormulaValue>& constants,
                                   const std::set<std::string>& declaredVariables)
    : m_code(std::make_shared<SFormulaCode>()), m_namedSubExpressions(namedSubExpressions), m_constants(constants),
      m_declaredVariables(declaredVariables)
{
    m_code->kind = kind;
}

std::shared_ptr<const SFormulaCode> CFormulaCompiler::Compile(const std::string& text)
{
    SFragment fragment = CompileText(text);
    m_code->instructions = std::move(fragment.instructions);
    m_code->stackSize = fragment.maxDepth;
    return m_code;
}

CFormulaCompiler::SFragment CFormulaCompiler::CompileText(const std::string& text)
{
    if (m_code->texts.size() >= std::numeric_limits<std::uint16_t>::max())
    {
        Fail("formula with too many named sub-expressions", 0);
    }
    SSource source(text, static_cast<std::uint16_t>(m_code->texts.size()));
    m_code->texts.push_back(text);
    SSource* const outer = std::exchange(m_source, &source);
    Expression();
    if (source.token.type != EFormulaToken::End)
    {
        Fail("unexpected \"" + source.text.substr(source.token.position, 1) + "\"", source.token.position);
    }
    m_source = outer;
    return std::move(source.fragment);
}

void CFormulaCompiler::Expression()
{
    const CNesting nesting(*this);
    Conditional();
}

void CFormulaCompiler::Conditional()
{
    LogicalOr();
    const std::size_t position = m_source->token.position;
    if (!Accept("?"))
    {
        return;
    }
    const std::size_t toElse = EmitJump(EFormulaOp::JumpIfFalse, position);
    Expression();
    Expect(":");
    const std::size_t toEnd = EmitJump(EFormulaOp::Jump, position);
    EndJump(toElse);
    --m_source->fragment.depth; // only one of the branches leaves its value
    Expression();
    EndJump(toEnd);
}

void CFormulaCompiler::LogicalOr()
{
    LogicalAnd();
    for (std::size_t position = m_source->token.position; Accept("||"); position = m_source->token.position)
    {
        const std::size_t jump = EmitJump(EFormulaOp::OrJump, position);
        LogicalAnd();
        Emit(EFormulaOp::Truth, position);
        EndJump(jump);
    }
}

void CFormulaCompiler::LogicalAnd()
{
    BinaryLevel(0);
    for (std::size_t position = m_source->token.position; Accept("&&"); position = m_source->token.position)
    {
        const std::size_t jump = EmitJump(EFormulaOp::AndJump, position);
        BinaryLevel(0);
        Emit(EFormulaOp::Truth, position);
        EndJump(jump);
    }
}

void CFormulaCompiler::BinaryLevel(std::size_t level)
{
    const auto operand = [this, level]
    {
        level == kBinaryLevels ? Unary() : BinaryLevel(level + 1);
    };
    operand();
    for (;;)
    {
        const SFormulaToken& token = m_source->token;
        if (token.type != EFormulaToken::Operator)
        {
            return;
        }
        const auto found = std::find_if(kBinaryOperators.begin(), kBinaryOperators.end(),
                                        [&](const SBinaryOperator& candidate)
                                        { return candidate.level == level && token.text == candidate.text; });
        if (found == kBinaryOperators.end())
        {
            return;
        }
        const std::size_t position = Take().position;
        operand();
        Emit(found->op, position);
    }
}

void CFormulaCompiler::Unary()
{
    const std::size_t position = m_source->token.position;
    if (Accept("-"))
    {
        if (m_source->token.isMinimum)
        {
            Take();
            EmitConstant(SFormulaValue::FromInteger(std::numeric_limits<std::int64_t>::min()), position);
            return;
        }
        Operand();
        Emit(EFormulaOp::Negate, position);
    }
    else if (Accept("~"))
    {
        Operand();
        Emit(EFormulaOp::BitNot, position);
    }
    else if (Accept("+"))
    {
        Operand();
    }
    else
    {
        Power();
    }
}

void CFormulaCompiler::Operand()
{
    const CNesting nesting(*this);
    Unary();
}

void CFormulaCompiler::Power()
{
    Primary();
    const std::size_t position = m_source->token.position;
    if (Accept("**"))
    {
        Operand(); // right-associative, and 2 ** -1 needs no brackets
        Emit(EFormulaOp::Power, position);
    }
}

void CFormulaCompiler::Primary()
{
    const SFormulaToken& token = m_source->token;
    if (token.type == EFormulaToken::Number)
    {
        Number();
    }
    else if (token.type == EFormulaToken::Name)
    {
        Name();
    }
    else if (Accept("("))
    {
        Expression();
        Expect(")");
    }
    else if (token.type == EFormulaToken::End)
    {
        Fail("unexpected end", token.position);
    }
    else
    {
        Fail("expected a value instead of \"" + token.text + "\"", token.position);
    }
}

void CFormulaCompiler::Number()
{
    const SFormulaToken token = Take();
    if (token.isTooLarge && m_code->kind == EFormulaKind::Integer)
    {
        Fail("number out of range", token.position);
    }
    EmitConstant(token.value, token.position);
}

void CFormulaCompiler::Name()
{
    const SFormulaToken token = Take();
    if (m_source->token.type == EFormulaToken::Operator && m_source->token.text == "(")
    {
        Function(token);
        return;
    }
    if (m_namedSubExpressions.count(token.text) != 0)
    {
        SubExpression(token.text, token.position);
        return;
    }
    const auto constant = m_constants.find(token.text);
    if (constant != m_constants.end())
    {
        EmitConstant(constant->second, token.position);
        return;
    }
    if (m_declaredVariables.count(token.text) == 0 && (token.text == "PI" || token.text == "E"))
    {
        EmitConstant(SFormulaValue::FromFloat(token.text == "PI" ? kPi : kE), token.position);
        return;
    }
    const auto next = static_cast<std::int32_t>(m_code->variables.size());
    const auto inserted = m_variableIndices.emplace(token.text, next);
    if (inserted.second)
    {
        m_code->variables.push_back(token.text);
    }
    Emit(EFormulaOp::PushVariable, token.position, inserted.first->second);
}

void CFormulaCompiler::Function(const SFormulaToken& name)
{
    Expect("(");
    if (name.text == "PI" || name.text == "E")
    {
        Expect(")");
        EmitConstant(SFormulaValue::FromFloat(name.text == "PI" ? kPi : kE), name.position);
        return;
    }
    const auto found = std::find_if(kFunctions.begin(), kFunctions.end(),
                                    [&](const SFunction& function) { return name.text == function.name; });
    if (found == kFunctions.end())
    {
        Fail("unknown function \"" + name.text + "\"", name.position);
    }
    EFormulaOp op = found->op;
    Expression();
    if (op == EFormulaOp::Round && Accept(","))
    {
        Expression();
        op = EFormulaOp::RoundDigits;
    }
    Expect(")");
    Emit(op, name.position);
}

void CFormulaCompiler::SubExpression(const std::string& name, std::size_t position)
{
    const CNesting nesting(*this);
    const auto start = std::find(m_open.begin(), m_open.end(), name);
    if (start != m_open.end())
    {
        std::string circle;
        for (auto link = start; link != m_open.end(); ++link)
        {
            circle += "\"" + *link + "\" -> ";
        }
        Fail("named sub-expressions use each other in a circle: " + circle + "\"" + name + "\"", position);
    }
    auto compiled = m_compiled.find(name);
    if (compiled == m_compiled.end())
    {
        m_open.push_back(name);
        compiled = m_compiled.emplace(name, CompileText(m_namedSubExpressions.at(name))).first;
        m_open.pop_back();
    }
    const SFragment& inner = compiled->second;
    SFragment& fragment = m_source->fragment;
    fragment.instructions.insert(fragment.instructions.end(), inner.instructions.begin(), inner.instructions.end());
    fragment.maxDepth = std::max(fragment.maxDepth, fragment.depth + inner.maxDepth);
    ++fragment.depth;
    CheckSize();
}

bool CFormulaCompiler::Accept(const char* op)
{
    if (m_source->token.type != EFormulaToken::Operator || m_source->token.text != op)
    {
        return false;
    }
    Take();
    return true;
}

void CFormulaCompiler::Expect(const char* op)
{
    const SFormulaToken& token = m_source->token;
    const std::string found = token.type == EFormulaToken::End ? "the end" : "something else";
    const std::size_t position = token.position;
    if (!Accept(op))
    {
        Fail("expected \"" + std::string(op) + "\" but found " + found, position);
    }
}

SFormulaToken CFormulaCompiler::Take()
{
    SFormulaToken next = m_source->lexer.Next();
    std::swap(next, m_source->token);
    return next;
}

void CFormulaCompiler::Emit(EFormulaOp op, std::size_t position, std::int32_t operand)
{
    SFragment& fragment = m_source->fragment;
    fragment.instructions.push_back({op, m_source->index, static_cast<std::uint32_t>(position), operand});
    fragment.depth = static_cast<std::size_t>(static_cast<std::ptrdiff_t>(fragment.depth) + StackEffect(op));
    fragment.maxDepth = std::max(fragment.maxDepth, fragment.depth);
    CheckSize();
}

void CFormulaCompiler::EmitConstant(const SFormulaValue& value, std::size_t position)
{
    const auto index = static_cast<std::int32_t>(m_code->constants.size());
    m_code->constants.push_back(value);
    Emit(EFormulaOp::PushConstant, position, index);
}

std::size_t CFormulaCompiler::EmitJump(EFormulaOp op, std::size_t position)
{
    Emit(op, position);
    return m_source->fragment.instructions.size() - 1;
}

void CFormulaCompiler::EndJump(std::size_t jump)
{
    std::vector<SFormulaInstruction>& instructions = m_source->fragment.instructions;
    instructions[jump].operand = static_cast<std::int32_t>(instructions.size() - jump - 1);
}

void CFormulaCompiler::CheckSize() const
{
    if (m_source->fragment.instructions.size() > kMaxInstructions)
    {
        Fail("formula of more than " + std::to_string(kMaxInstructions) + " operations", 0);
    }
    if (m_source->fragment.maxDepth > kFormulaStackSize)
    {
        Fail("formula that keeps more than " + std::to_string(kFormulaStackSize) + " intermediate results", 0);
    }
}

void CFormulaCompiler::Fail(const std::string& what, std::size_t position) const
{
    std::string place = DescribePlace(m_source->text, position);
    if (!m_open.empty())
    {
        place += " (named sub-expression \"" + m_open.back() + "\")";
    }
    GENICAM_THROW(LogicalErrorException, what + " " + place);
}

} // namespace Internal
} // namespace GenApi
