#pragma once

#include "effects/IColorStrapManager.h"
#include "support/config/ConfigurationManager.h"

#include <QJsonArray>
#include <shared_mutex>

/// The list of gradients: the user's, else the shipped one, else a single built-in gradient. The list stays
/// in the form in which it is stored; a strap nobody changed is written back as it was read. Any thread;
/// signals come from the thread of the change.
class ColorStrapManager : public IColorStrapManager
{
    Q_OBJECT

public:
    /// The shipped list in the folder `effects` below the working directory, beside the group files.
    static constexpr char kShippedFile[] = "colorStraps.json";

    explicit ColorStrapManager(QObject* parent,
                               ConfigurationManager* config = ConfigurationManager::instance());

    ColorStrap strap(int i) override;
    int strapCount() override;
    bool isValidStrapIndex(int i) override;
    void removeStrap(int i) override;
    int addStrap(const ColorStrap& s) override;
    int addDefaultStrap() override;
    void setStrap(int i, const ColorStrap& s) override;

private:
    void init();
    bool loadFromUsrData();
    bool loadFromAppPath();
    /// Takes the good straps of an array over; 0, and the list as it was, when there is none.
    int adopt(const QJsonArray& array);
    QJsonObject strapJsonObj(int i) const; // m_strapsLock is held
    bool holds(int i) const { return i >= 0 && i < m_straps.size(); }
    void save();

    ConfigurationManager* const m_config;
    QJsonArray m_straps;
    std::shared_mutex m_strapsLock;
};
