#include "effects/graphics/SFrmPixmapStream.h"

#include "support/log/Loggers.h"
#include "widgets/ElidingComboBox.h"

#include <QDebug>
#include <QEvent>
#include <QGridLayout>
#include <QJsonArray>
#include <QSignalBlocker>

namespace {

constexpr int kMargin = 10;
constexpr int kBoxHeight = 20;
constexpr int kHeight = 40;
constexpr char kAnimations[] = "animations";
constexpr char kCurrentAnime[] = "currentAnime";

} // namespace

SFrmPixmapStream::SFrmPixmapStream(QWidget* parent)
    : WithProperties(parent)
    , m_animesComboBox(new ElidingComboBox(this))
{
    m_properties.add({
        {kAnimations,
         {},
         [this](const QJsonValue& list) {
             QStringList names;
             for (const auto& name : list.toArray())
                 names += name.toString();
             names.removeAll(QString());
             setAnimes(names);
         }},
        {kCurrentAnime, [this] { return m_animesComboBox->currentText(); },
         [this](const QJsonValue& name) { setCurrentAnimes(name.toString()); }},
    });
    m_animesComboBox->setObjectName(QStringLiteral("animesComboBox"));
    m_animesComboBox->setMinimumHeight(kBoxHeight);
    setMinimumHeight(kHeight);
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    grid->addWidget(m_animesComboBox, 0, 0);
    showWhetherEmpty();
    connect(m_animesComboBox, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &SFrmPixmapStream::onAnimesComboBoxIndexChanged);
}

QJsonValue SFrmPixmapStream::effectProperty(const QString& key)
{
    return m_properties.read(key == QLatin1String(kCurrentAnime) ? key : QString());
}

void SFrmPixmapStream::setAnimes(const QStringList& animes)
{
    qDebug() << "Begining to set animes to view, animes count" << animes.size();
    const QSignalBlocker blocker(m_animesComboBox);
    m_animesComboBox->clear();
    m_animesComboBox->addItems(animes);
    m_animes = animes;
    showWhetherEmpty();
    qDebug().nospace() << animes.size() << " animes has added to view";
}

void SFrmPixmapStream::setCurrentAnimes(const QString& name)
{
    qDebug().noquote() << "Begining to set current anime in view, anime" << name;
    const int index = m_animes.indexOf(name);
    if (index < 0) {
        qCritical().noquote() << "Not found animation name" << name;
        return;
    }
    const QSignalBlocker blocker(m_animesComboBox);
    m_animesComboBox->setCurrentIndex(index);
    qDebug().noquote().nospace() << "Current anime has changed to index: " << index << " name: " << name;
}

void SFrmPixmapStream::onAnimesComboBoxIndexChanged(int i)
{
    const auto log = [](const QString& text) { LOG4CPLUS_INFO(usrOptionsLogger(), toLogString(text)); };
    log(QStringLiteral("The usr has selected anime index %1").arg(i));
    if (i < 0 || i >= m_animes.size()) {
        qCritical() << "Invalied anime index" << i << "\n animes :" << m_animes;
        return;
    }
    log(QStringLiteral("The usr has selected anime %1").arg(m_animes.at(i)));
    emit effectPropertyChanged(kCurrentAnime, m_animes.at(i));
}

/// A field that opens on nothing would look broken.
void SFrmPixmapStream::showWhetherEmpty()
{
    m_animesComboBox->setAccessibleName(tr("动画"));
    m_animesComboBox->setEnabled(!m_animes.isEmpty());
    m_animesComboBox->setPlaceholderText(m_animes.isEmpty() ? tr("没有可选的动画") : QString());
}

void SFrmPixmapStream::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        showWhetherEmpty();
    AbsWorkerWidget::changeEvent(event);
}
