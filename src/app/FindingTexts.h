#pragma once

#include "controllers/PortFinding.h"
#include "system/AccessGrant.h"
#include "viewModels/FindingCard.h"

#include <QCoreApplication>

/// What findings say to the user, in the language of the moment.
class FindingTexts
{
    Q_DECLARE_TR_FUNCTIONS(FindingTexts)

public:
    /// `access`: how far the user's request for access is.
    static FindingCards cards(const PortFindings& findings, AccessGrant::State access);
    /// A line each, of what is more than a passing state.
    static QString notice(const PortFindings& findings);

private:
    static QString holderName(const PortHolder& holder);
    static FindingCard cardOf(const PortFinding& finding, AccessGrant::State access);
    static FindingCard permissionCard(const PortFinding& finding, AccessGrant::State access);
};
