// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/internal/formulareader.h"

#include "genapi/exceptions.h"
#include "genapi/internal/elementreader.h"
#include "genapi/internal/textparse.h"

#include <map>
#include <set>

namespace GenApi
{
namespace Internal
{
namespace
{

/** What a node's formulas may use by name. */
struct SFormulaScope
{
    std::map<std::string, NodeIndex> variables;
    std::set<std::string> names;
    std::map<std::string, std::string> expressions;
    std::map<std::string, SFormulaValue> constants;
};

std::string NameOf(const SNodeDescription& node, pugi::xml_node element)
{
    const std::string name(Trim(element.attribute("Name").value()));
    if (name.empty())
    {
        ThrowDescriptionError(node.name, "<" + std::string(element.name()) + "> has no Name");
    }
    return name;
}

SFormulaValue ConstantOf(const SNodeDescription& node, pugi::xml_node element)
{
    const std::string text = TextOf(element);
    std::int64_t integer = 0;
    double real = 0.0;
    if (ParseInteger(text, integer))
    {
        return SFormulaValue::FromInteger(integer);
    }
    if (ParseFloat(text, real))
    {
        return SFormulaValue::FromFloat(real);
    }
    ThrowDescriptionError(node.name, "the constant '" + text.substr(0, 80) + "' is no number");
}

SFormulaScope ReadScope(const SDescription& description, const SNodeDescription& node)
{
    SFormulaScope scope;
    for (const pugi::xml_node child : node.element.children())
    {
        const std::string kind = child.name();
        if (kind == "pVariable")
        {
            const std::string target = TextOf(child);
            const NodeIndex index = description.Find(target);
            if (index == NoNode)
            {
                ThrowDescriptionError(node.name, "<pVariable> refers to '" + target + "', which does not exist");
            }
            const std::string name = NameOf(node, child);
            scope.variables[name] = index;
            scope.names.insert(name);
        }
        else if (kind == "Expression")
        {
            scope.expressions[NameOf(node, child)] = TextOf(child);
        }
        else if (kind == "Constant")
        {
            scope.constants[NameOf(node, child)] = ConstantOf(node, child);
        }
    }
    return scope;
}

std::int64_t EntryValue(const SDescription& description, const SNodeDescription& node, NodeIndex enumeration,
                        const std::string& symbolic)
{
    const SNodeDescription& target = description.nodes[static_cast<std::size_t>(enumeration)];
    if (!target.enumeration)
    {
        ThrowDescriptionError(node.name, "asks for an entry of '" + target.name + "', which is no enumeration");
    }
    const auto found = target.enumeration->bySymbolic.find(symbolic);
    if (found == target.enumeration->bySymbolic.end())
    {
        ThrowDescriptionError(node.name,
                              "asks for the entry '" + symbolic + "', which '" + target.name + "' does not have");
    }
    return description.nodes[static_cast<std::size_t>(found->second)].entry->value;
}

/** The suffix is what follows the variable's name and a dot. */
SVariable BindSuffix(const SDescription& description, const SNodeDescription& node, NodeIndex target,
                     const std::string& suffix)
{
    static const std::map<std::string, EAspect> Aspects = {{"", EAspect::Value},  {"Value", EAspect::Value},
                                                           {"Min", EAspect::Min}, {"Max", EAspect::Max},
                                                           {"Inc", EAspect::Inc}, {"Address", EAspect::Address}};
    SVariable variable;
    variable.node = target;
    const std::string entryPrefix = "Entry.";
    if (suffix.compare(0, entryPrefix.size(), entryPrefix) == 0)
    {
        variable.aspect = EAspect::Constant;
        variable.constant = EntryValue(description, node, target, suffix.substr(entryPrefix.size()));
        return variable;
    }
    const auto found = Aspects.find(suffix);
    if (found == Aspects.end())
    {
        ThrowDescriptionError(node.name, "the formula asks a variable for '" + suffix + "'");
    }
    variable.aspect = found->second;
    return variable;
}

SVariable Bind(const SDescription& description, const SNodeDescription& node, const SFormulaScope& scope,
               const std::string& name, const std::string& ownName)
{
    const std::size_t dot = name.find('.');
    const std::string suffix = dot == std::string::npos ? "" : name.substr(dot + 1);
    for (const std::string& candidate : {name, name.substr(0, dot)})
    {
        const auto found = scope.variables.find(candidate);
        if (found != scope.variables.end())
        {
            return BindSuffix(description, node, found->second, suffix);
        }
    }
    if (!ownName.empty() && name == ownName)
    {
        return SVariable();
    }
    ThrowDescriptionError(node.name, "the formula uses '" + name + "', which is no variable of it");
}

SBoundFormula ReadFormula(const SDescription& description, const SNodeDescription& node, const SFormulaScope& scope,
                          const char* elementName, const std::string& ownName)
{
    const pugi::xml_node element = node.element.child(elementName);
    if (!element)
    {
        ThrowDescriptionError(node.name, "<" + std::string(elementName) + "> is missing");
    }
    SBoundFormula bound;
    const EFormulaKind kind = IsIntegerKind(node.kind) ? EFormulaKind::Integer : EFormulaKind::Float;
    try
    {
        bound.formula = CFormula::Parse(TextOf(element), kind, scope.expressions, scope.constants, scope.names);
    }
    catch (const GenICam::GenericException& e)
    {
        ThrowDescriptionError(node.name, e.GetDescription());
    }
    for (const std::string& name : bound.formula.GetVariableNames())
    {
        bound.variables.push_back(Bind(description, node, scope, name, ownName));
    }
    return bound;
}

} // namespace

void ReadFormulas(const SDescription& description, SNodeDescription& node)
{
    const SFormulaScope scope = ReadScope(description, node);
    if (IsConverterKind(node.kind))
    {
        SFormulaScope toScope = scope;
        toScope.names.insert("FROM");
        SFormulaScope fromScope = scope;
        fromScope.names.insert("TO");
        node.formula->to = ReadFormula(description, node, toScope, "FormulaTo", "FROM");
        node.formula->from = ReadFormula(description, node, fromScope, "FormulaFrom", "TO");
    }
    else
    {
        node.formula->from = ReadFormula(description, node, scope, "Formula", "");
    }
}

} // namespace Internal
} // namespace GenApi
