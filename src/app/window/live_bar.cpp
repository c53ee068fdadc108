#include "app/window/live_bar.h"

#include <QHBoxLayout>
#include <QToolButton>

#include "base/error.h"
#include "base/prompt.h"
#include "desk/document/document.h"
#include "desk/widgets/ink_icon.h"
#include "desk/widgets/text.h"
#include "desk/widgets/text_lines.h"

namespace tarnwick {
namespace {

constexpr int kMostLines = 2;

QString TextOf(const LiveData& live) {
  QStringList texts;
  for (const std::string& text : live.Texts()) texts << ToQt(text);
  if (texts.isEmpty()) return LiveBar::tr("Data of this graph can come by themselves.");
  return texts.join("; ") + '.';
}

}  // namespace

LiveBar::LiveBar(Document& document, Prompt& prompt, QWidget* parent)
    : NoteBar(parent),
      document_(document),
      prompt_(prompt),
      text_(new TextLines(kMostLines, this)) {
  setObjectName("LiveBar");
  text_->setObjectName("LiveText");
  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins(8, 4, 4, 4);
  row->addWidget(text_, 1);
  const auto add = [&](const char* icon, const QString& name, const char* object) {
    auto* const button = new QToolButton(this);
    button->setObjectName(object);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    button->setIcon(InkIcon(icon));
    button->setAccessibleName(name);
    button->setToolTip(name);
    row->addWidget(button, 0, Qt::AlignVCenter);
    return button;
  };
  start_ = add("live-start", tr("Start, or go on"), "StartLive");
  pause_ = add("live-pause", tr("Pause"), "PauseLive");
  stop_ = add("live-stop", tr("Stop"), "StopLive");
  connect(start_, &QToolButton::clicked, this, &LiveBar::Start);
  connect(pause_, &QToolButton::clicked, &document_.Live(), &LiveData::Pause);
  connect(stop_, &QToolButton::clicked, &document_.Live(), &LiveData::Stop);
  connect(&document_.Live(), &LiveData::changed, this, &LiveBar::Follow);
  connect(&document_, &Document::stateChanged, this, &LiveBar::Follow);
  Follow();
}

void LiveBar::Start() {
  try {
    document_.Live().Start();
  } catch (const Error& error) {
    prompt_.Tell(error.what());
  }
}

void LiveBar::Follow() {
  const StreamState state = document_.Live().State();
  const bool comes = state == StreamState::Running || state == StreamState::Away;
  text_->ShowText(TextOf(document_.Live()));
  start_->setEnabled(!comes);
  pause_->setEnabled(comes);
  stop_->setEnabled(comes || state == StreamState::Paused);
  setVisible(document_.Live().HasSources());
}

}  // namespace tarnwick
