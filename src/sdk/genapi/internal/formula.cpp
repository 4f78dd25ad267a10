// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/internal/formula.h"

#include "genapi/exceptions.h"
#include "genapi/internal/formulacode.h"
#include "genapi/internal/formulacompiler.h"
#include "genapi/internal/formulamath.h"

#include <array>
#include <cmath>
#include <stdexcept>

namespace GenApi
{
namespace Internal
{
namespace
{

constexpr std::size_t kShownCharacters = 80; // of a formula in an error text
constexpr std::size_t kSmallStackSize = 8;   // values

class CFormulaMachine
{
public:
    CFormulaMachine(const SFormulaCode& code, const SFormulaValue* values, SFormulaValue* stack)
        : m_code(code), m_values(values), m_stack(stack)
    {
    }

    SFormulaValue Run()
    {
        const std::size_t end = m_code.instructions.size();
        for (m_next = 0; m_next < end;)
        {
            const SFormulaInstruction& instruction = m_code.instructions[m_next++];
            if (!Transfer(instruction))
            {
                Compute(instruction);
            }
        }
        return m_stack[0];
    }

    const SFormulaInstruction& Current() const { return m_code.instructions[m_next - 1]; }

private:
    /** Pushes and jumps; false for the operations. */
    bool Transfer(const SFormulaInstruction& instruction)
    {
        switch (instruction.op)
        {
        case EFormulaOp::PushConstant:
            m_stack[m_top++] = m_code.constants[static_cast<std::size_t>(instruction.operand)];
            return true;
        case EFormulaOp::PushVariable:
            m_stack[m_top++] = m_values[instruction.operand];
            return true;
        case EFormulaOp::Jump:
            m_next += static_cast<std::size_t>(instruction.operand);
            return true;
        case EFormulaOp::JumpIfFalse:
            m_next += FormulaMath::IsTrue(m_stack[--m_top]) ? 0 : static_cast<std::size_t>(instruction.operand);
            return true;
        case EFormulaOp::AndJump:
        case EFormulaOp::OrJump:
            Shortcut(instruction);
            return true;
        default:
            return false;
        }
    }

    void Shortcut(const SFormulaInstruction& instruction)
    {
        const bool decidedBy = instruction.op == EFormulaOp::OrJump;
        if (FormulaMath::IsTrue(m_stack[--m_top]) == decidedBy)
        {
            m_stack[m_top++] = SFormulaValue::FromInteger(decidedBy ? 1 : 0);
            m_next += static_cast<std::size_t>(instruction.operand);
        }
    }

    void Compute(const SFormulaInstruction& instruction)
    {
        const EFormulaOp op = instruction.op;
        const bool isBinary = (op >= EFormulaOp::Add && op <= EFormulaOp::GreaterEqual && op != EFormulaOp::BitNot) ||
                              op == EFormulaOp::RoundDigits;
        if (isBinary)
        {
            --m_top;
            m_stack[m_top - 1] = FormulaMath::Binary(op, m_code.kind, m_stack[m_top - 1], m_stack[m_top]);
        }
        else
        {
            m_stack[m_top - 1] = FormulaMath::Unary(op, m_code.kind, m_stack[m_top - 1]);
        }
    }

    const SFormulaCode& m_code;
    const SFormulaValue* m_values;
    SFormulaValue* m_stack;
    std::size_t m_top = 0;
    std::size_t m_next = 0; // index of the instruction after the current one
};

/** Runs with a stack of its own; a small one for all usual formulas, because clearing a large one costs more than they.
 */
template <std::size_t StackSize> SFormulaValue RunWithStack(const SFormulaCode& code, const SFormulaValue* values)
{
    std::array<SFormulaValue, StackSize> stack;
    CFormulaMachine machine(code, values, stack.data());
    try
    {
        return machine.Run();
    }
    catch (const std::exception& error)
    {
        GENICAM_THROW(RuntimeException, std::string(error.what()) + " " + code.Describe(machine.Current()));
    }
}

} // namespace

std::string DescribePlace(const std::string& text, std::size_t position)
{
    const std::size_t start = position > kShownCharacters / 2 ? position - kShownCharacters / 2 : 0;
    std::string shown = text.substr(start, kShownCharacters);
    if (start > 0)
    {
        shown.insert(0, "...");
    }
    if (start + kShownCharacters < text.size())
    {
        shown += "...";
    }
    return "at character " + std::to_string(position + 1) + " of the formula \"" + shown + "\"";
}

std::string SFormulaCode::Describe(const SFormulaInstruction& instruction) const
{
    return DescribePlace(texts[instruction.text], instruction.position);
}

CFormula::CFormula(std::shared_ptr<const SFormulaCode> code) : m_code(std::move(code)) {}

CFormula CFormula::Parse(const std::string& text, EFormulaKind kind,
                         const std::map<std::string, std::string>& namedSubExpressions,
                         const std::map<std::string, SFormulaValue>& constants,
                         const std::set<std::string>& declaredVariables)
{
    return CFormula(CFormulaCompiler(kind, namedSubExpressions, constants, declaredVariables).Compile(text));
}

const std::vector<std::string>& CFormula::GetVariableNames() const
{
    static const std::vector<std::string> none;
    return m_code == nullptr ? none : m_code->variables;
}

SFormulaValue CFormula::Evaluate(const SFormulaValue* values, std::size_t count) const
{
    if (m_code == nullptr)
    {
        GENICAM_THROW(LogicalErrorException, "evaluation of an empty formula");
    }
    if (count < m_code->variables.size())
    {
        GENICAM_THROW(LogicalErrorException, "no value for the variable \"" + m_code->variables[count] +
                                                 "\" of the formula \"" + m_code->texts.front() + "\"");
    }
    return m_code->stackSize <= kSmallStackSize ? RunWithStack<kSmallStackSize>(*m_code, values)
                                                : RunWithStack<kFormulaStackSize>(*m_code, values);
}

std::int64_t CFormula::EvaluateInteger(const SFormulaValue* values, std::size_t count) const
{
    const SFormulaValue result = Evaluate(values, count);
    try
    {
        return m_code->kind == EFormulaKind::Float ? FormulaMath::ToNearestInteger(result)
                                                   : FormulaMath::ToInteger(result);
    }
    catch (const std::exception& error)
    {
        GENICAM_THROW(RuntimeException,
                      std::string(error.what()) + ": the result of the formula \"" + m_code->texts.front() + "\"");
    }
}

double CFormula::EvaluateFloat(const SFormulaValue* values, std::size_t count) const
{
    const double result = FormulaMath::ToFloat(Evaluate(values, count));
    if (!std::isfinite(result))
    {
        GENICAM_THROW(RuntimeException,
                      "the result of the formula \"" + m_code->texts.front() + "\" is no finite number");
    }
    return result;
}

} // namespace Internal
} // namespace GenApi
