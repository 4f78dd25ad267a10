// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/internal/formulacode.h"
#include "genapi/internal/formulalexer.h"

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace GenApi
{
namespace Internal
{

/** Compiles one formula and the named sub-expressions it uses: a recursive-descent parser that emits as it reads. */
class CFormulaCompiler
{
public:
    CFormulaCompiler(EFormulaKind kind, const std::map<std::string, std::string>& namedSubExpressions,
                     const std::map<std::string, SFormulaValue>& constants,
                     const std::set<std::string>& declaredVariables);

    std::shared_ptr<const SFormulaCode> Compile(const std::string& text);

private:
    /** Code of a text whose jumps are relative, so that it can be put anywhere. */
    struct SFragment
    {
        std::vector<SFormulaInstruction> instructions;
        std::size_t depth = 0;    // values on the stack after what was emitted so far
        std::size_t maxDepth = 0; // values on the stack at most
    };
    /** What is being read: pushed anew for each named sub-expression. */
    struct SSource
    {
        SSource(const std::string& text, std::uint16_t index);

        const std::string& text;
        std::uint16_t index;
        CFormulaLexer lexer;
        SFormulaToken token; // the token to be read next
        SFragment fragment;
    };
    class CNesting;

    SFragment CompileText(const std::string& text);
    void Expression();
    void Conditional();
    void LogicalOr();
    void LogicalAnd();
    void BinaryLevel(std::size_t level);
    void Unary();
    void Operand();
    void Power();
    void Primary();
    void Number();
    void Name();
    void Function(const SFormulaToken& name);
    void SubExpression(const std::string& name, std::size_t position);

    bool Accept(const char* op);
    void Expect(const char* op);
    SFormulaToken Take();
    void Emit(EFormulaOp op, std::size_t position, std::int32_t operand = 0);
    void EmitConstant(const SFormulaValue& value, std::size_t position);
    std::size_t EmitJump(EFormulaOp op, std::size_t position);
    void EndJump(std::size_t jump);
    void CheckSize() const;
    [[noreturn]] void Fail(const std::string& what, std::size_t position) const;

    std::shared_ptr<SFormulaCode> m_code;
    const std::map<std::string, std::string>& m_namedSubExpressions;
    const std::map<std::string, SFormulaValue>& m_constants;
    const std::set<std::string>& m_declaredVariables;
    std::map<std::string, std::int32_t> m_variableIndices;
    std::map<std::string, SFragment> m_compiled; // named sub-expressions by name
    std::vector<std::string> m_open;             // names of the sub-expressions being read, outermost first
    SSource* m_source = nullptr;
    std::size_t m_nesting = 0;
};

} // namespace Internal
} // namespace GenApi
