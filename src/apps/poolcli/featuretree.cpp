// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "poolcli/featuretree.h"

#include "poolcli/output.h"
#include "poolcli/texts.h"

#include "genapi/inodemap.h"

#include <array>
#include <set>

namespace PoolCli
{
namespace
{

using namespace GenApi;

constexpr std::array visibilityNames{"Beginner", "Expert", "Guru", "Invisible"};
constexpr std::array accessNames{"NI", "NA", "WO", "RO", "RW"};
constexpr std::array kindNames{"Value",  "Base",     "Integer",  "Boolean",     "Command",   "Float",
                               "String", "Register", "Category", "Enumeration", "EnumEntry", "Port"};

template <std::size_t N> QString name(const std::array<const char*, N>& names, int index)
{
    return index >= 0 && index < static_cast<int>(N) ? QString::fromLatin1(names[static_cast<std::size_t>(index)])
                                                     : QString();
}

QString qString(const GenICam::gcstring& text)
{
    return QString::fromUtf8(text.c_str());
}

QString rangeOf(INode* pNode)
{
    if (const CIntegerPtr integer(pNode); integer)
    {
        return QStringLiteral("%1..%2 step %3").arg(integer->GetMin()).arg(integer->GetMax()).arg(integer->GetInc());
    }
    if (const CFloatPtr real(pNode); real)
    {
        return QStringLiteral("%1..%2").arg(real->GetMin()).arg(real->GetMax());
    }
    if (const CEnumerationPtr enumeration(pNode); enumeration)
    {
        QStringList symbolics;
        EnumEntryList entries;
        enumeration->GetEntries(entries);
        for (IEnumEntry* pEntry : entries)
        {
            if (IsAvailable(pEntry))
            {
                symbolics.append(qString(pEntry->GetSymbolic()));
            }
        }
        return symbolics.join(QLatin1Char('|'));
    }
    return {};
}

QString unitOf(INode* pNode)
{
    if (const CIntegerPtr integer(pNode); integer)
    {
        return qString(integer->GetUnit());
    }
    if (const CFloatPtr real(pNode); real)
    {
        return qString(real->GetUnit());
    }
    return {};
}

/** Walks one node map. */
class CReader
{
public:
    CReader(QString path, QString filter, int visibility)
        : m_path(std::move(path)), m_filter(std::move(filter)), m_visibility(visibility)
    {
    }

    void walk(const ICategory& category, int depth)
    {
        FeatureList features;
        category.GetFeatures(features);
        for (INode* pNode : features)
        {
            if (static_cast<int>(pNode->GetVisibility()) <= m_visibility)
            {
                visit(pNode, depth);
            }
        }
    }

    const QVector<SFeature>& features() const { return m_features; }

private:
    void visit(INode* pNode, int depth)
    {
        SFeature feature = describe(pNode, depth);
        if (const CCategoryPtr category(pNode); category)
        {
            // A description may name a category twice; its features are shown once.
            if (!m_seen.insert(pNode).second)
            {
                return;
            }
            const int before = m_features.size();
            m_features.append(feature);
            walk(*category, depth + 1);
            if (m_features.size() == before + 1 && !m_filter.isEmpty())
            {
                m_features.removeLast();
            }
            return;
        }
        if (feature.name.contains(m_filter, Qt::CaseInsensitive))
        {
            readValue(pNode, feature);
            m_features.append(feature);
        }
    }

    SFeature describe(INode* pNode, int depth) const
    {
        SFeature feature;
        feature.path = m_path;
        feature.name = qString(pNode->GetName());
        feature.displayName = qString(pNode->GetDisplayName());
        feature.kind = name(kindNames, static_cast<int>(pNode->GetPrincipalInterfaceType()));
        feature.visibility = name(visibilityNames, static_cast<int>(pNode->GetVisibility()));
        feature.depth = depth;
        return feature;
    }

    static void readValue(INode* pNode, SFeature& feature)
    {
        try
        {
            feature.access = name(accessNames, static_cast<int>(pNode->GetAccessMode()));
            if (const CValuePtr value(pNode); value && IsReadable(pNode) && !CCommandPtr(pNode))
            {
                feature.value = qString(value->ToString());
            }
            feature.unit = unitOf(pNode);
            if (IsAvailable(pNode))
            {
                feature.range = rangeOf(pNode);
            }
        }
        catch (const GenICam::GenericException& e)
        {
            feature.value = QStringLiteral("<%1>").arg(QString::fromUtf8(e.GetDescription()));
        }
    }

    QString m_path;
    QString m_filter;
    int m_visibility;
    std::set<const INode*> m_seen;
    QVector<SFeature> m_features;
};

} // namespace

QVector<SFeature> readFeatures(const ParameterCollection::IParameterCollection& collection, const QString& filter,
                               const QString& visibility, const QString& onlyPath)
{
    int level = 0;
    while (level + 1 < static_cast<int>(visibilityNames.size()) && name(visibilityNames, level) != visibility)
    {
        ++level;
    }
    QVector<SFeature> result;
    const ParameterCollection::CScopedObjectStateLock lock(collection.objectState());
    const auto paths = collection.paths();
    for (const QString& path : paths)
    {
        if (!onlyPath.isEmpty() && path != onlyPath)
        {
            continue;
        }
        INodeMap* pNodeMap = collection.nodeMap(path);
        const CCategoryPtr root(pNodeMap == nullptr ? nullptr : pNodeMap->GetNode("Root"));
        if (!root)
        {
            continue;
        }
        CReader reader(path, filter, level);
        reader.walk(*root, 1);
        if (!reader.features().isEmpty())
        {
            SFeature heading;
            heading.path = path;
            heading.name = path;
            heading.kind = QStringLiteral("Category");
            result.append(heading);
            result += reader.features();
        }
    }
    return result;
}

QJsonObject toJson(const SFeature& feature)
{
    return {{"path", feature.path},   {"name", feature.name},     {"display_name", feature.displayName},
            {"kind", feature.kind},   {"access", feature.access}, {"visibility", feature.visibility},
            {"value", feature.value}, {"unit", feature.unit},     {"range", feature.range}};
}

QJsonArray toJson(const QVector<SFeature>& features)
{
    QJsonArray array;
    for (const SFeature& feature : features)
    {
        array.append(toJson(feature));
    }
    return array;
}

void printTree(const QVector<SFeature>& features)
{
    if (features.isEmpty())
    {
        printLine(CTexts::tr("No feature to show."));
    }
    for (const SFeature& feature : features)
    {
        const QString indent(feature.depth * 2, QLatin1Char(' '));
        if (feature.kind == QLatin1String("Category"))
        {
            printLine(indent + feature.name);
            continue;
        }
        QString line = QStringLiteral("%1%2 = %3").arg(indent, feature.name, printable(feature.value));
        if (!feature.unit.isEmpty())
        {
            line += QLatin1Char(' ') + feature.unit;
        }
        line += QStringLiteral("  [%1, %2").arg(feature.kind, feature.access);
        if (!feature.range.isEmpty())
        {
            line += QStringLiteral(", ") + feature.range;
        }
        printLine(line + QLatin1Char(']'));
    }
}

} // namespace PoolCli
