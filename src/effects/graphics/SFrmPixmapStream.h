#pragma once

#include "effects/AbsWorkerWidget.h"
#include "effects/EffectProperties.h"

#include <QStringList>

class QComboBox;

/// The choice of an animation, for a worker that has several. Properties: "animations", the list of their
/// names, which can only be written, and "currentAnime". Reading any other key gives them all, as the empty
/// one.
class SFrmPixmapStream : public WithProperties<AbsWorkerWidget>
{
    Q_OBJECT

public:
    Q_INVOKABLE explicit SFrmPixmapStream(QWidget* parent);

    QJsonValue effectProperty(const QString& key) override;

    void setAnimes(const QStringList& animes);
    /// An unknown name changes nothing.
    void setCurrentAnimes(const QString& name);

public slots:
    void onAnimesComboBoxIndexChanged(int i);

protected:
    void changeEvent(QEvent* event) override;

private:
    void showWhetherEmpty();

    QComboBox* m_animesComboBox = nullptr;
    QStringList m_animes;
};
