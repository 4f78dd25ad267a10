// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "parametercollection/iparametercollection.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QString>
#include <QVector>

namespace PoolCli
{

/** One line of a feature tree; a category is a line of its own. */
struct SFeature
{
    QString path; // "@CameraDevice"
    QString name;
    QString displayName;
    QString kind;   // "Integer", "Category" ...
    QString access; // "RW", "NA" ...
    QString visibility;
    QString value; // "" when it cannot be read now
    QString unit;
    QString range; // "16..1280 step 16", "Off|On" ...
    int depth = 0;
};

/**
 * The features of all attached node maps, in the order of their categories.
 *
 * filter: part of a name, any case; "" takes all. visibility: the highest that is shown, "Beginner", "Expert", "Guru"
 * or "Invisible". path: the node map to read alone, such as "@StreamGrabber0"; "" for all. Values that fail to be read
 * have the reason as their value, in angle brackets.
 */
QVector<SFeature> readFeatures(const ParameterCollection::IParameterCollection& collection, const QString& filter,
                               const QString& visibility, const QString& path = {});

QJsonObject toJson(const SFeature& feature);
QJsonArray toJson(const QVector<SFeature>& features);
/** Prints the tree for people. */
void printTree(const QVector<SFeature>& features);

} // namespace PoolCli
