// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "poolcli/eventsettings.h"

#include "poolcli/texts.h"
#include "poolcli/verbs.h"

#include "parametercollection/parameters.h"

namespace PoolCli
{
namespace
{

using ParameterCollection::CEnumParameter;
using ParameterCollection::CParameter;

// Names of the GenICam standard feature naming conventions.
const QString Selector = QStringLiteral("@CameraDevice/EventSelector");
const QString Notification = QStringLiteral("@CameraDevice/EventNotification");
const QString On = QStringLiteral("On");

const QString ChannelStatus = QStringLiteral("@EventGrabber/Status");

} // namespace

CEventSettings::CEventSettings(Collection collection) : m_collection(std::move(collection))
{
    if (names().isEmpty() || !CParameter(m_collection, Notification).isValid())
    {
        throw CRefusal(CTexts::tr("The camera reports no events."));
    }
    if (!CParameter(m_collection, ChannelStatus).isValid() || read(ChannelStatus) != QLatin1String("Open"))
    {
        throw CRefusal(CTexts::tr("The camera's events cannot be received; the log says why."));
    }
}

CEventSettings::~CEventSettings()
{
    try
    {
        restore();
    }
    catch (const std::exception&)
    {
        // A camera that was lost keeps nothing to restore; restore() itself tells of the rest.
    }
}

QStringList CEventSettings::names() const
{
    const CEnumParameter selector(m_collection, Selector);
    return selector.isAvailable() ? selector.symbolics() : QStringList();
}

QString CEventSettings::read(const QString& name) const
{
    try
    {
        return CParameter(m_collection, name).toString();
    }
    catch (const GenICam::GenericException& e)
    {
        throw CRefusal(CTexts::tr("%1 cannot be read: %2").arg(name, QString::fromUtf8(e.GetDescription())));
    }
}

void CEventSettings::write(const QString& name, const QString& value)
{
    applySetting(m_collection, name + QLatin1Char('=') + value);
}

void CEventSettings::check(const QStringList& wanted) const
{
    const QStringList all = names();
    for (const QString& name : wanted)
    {
        if (!all.contains(name))
        {
            throw CRefusal(
                CTexts::tr("The camera has no event %1; it has: %2.").arg(name, all.join(QStringLiteral(", "))));
        }
    }
}

void CEventSettings::enable(const QStringList& wanted)
{
    m_selector = read(Selector);
    for (const QString& name : wanted)
    {
        write(Selector, name);
        const QString former = read(Notification);
        if (former != On)
        {
            write(Notification, On);
            m_changed.append({name, former});
        }
    }
}

void CEventSettings::restore()
{
    if (m_selector.isEmpty())
    {
        return;
    }
    QString failure;
    const auto apply = [&](const QString& name, const QString& value)
    {
        try
        {
            write(name, value);
            return true;
        }
        catch (const CRefusal& refusal)
        {
            failure = failure.isEmpty() ? QString::fromUtf8(refusal.what()) : failure;
            return false;
        }
    };
    for (const auto& [event, notification] : std::exchange(m_changed, {}))
    {
        if (apply(Selector, event)) // else it would be another event's
        {
            apply(Notification, notification);
        }
    }
    apply(Selector, std::exchange(m_selector, {}));
    if (!failure.isEmpty())
    {
        throw CRefusal(CTexts::tr("The event settings could not be restored: %1").arg(failure));
    }
}

} // namespace PoolCli
