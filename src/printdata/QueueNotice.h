#pragma once
// How those who change the queue away from its page tell the page, and how the remote client learns of
// changes made at the machine. The page is above; it installs itself.

#include <functional>

/// Installed by the queue page; called on any thread, so it has to post. `changed` as below.
void setQueueRefresh(std::function<void()> refresh);
/// Has the page show its tab anew. `changed`: the machine's own doing, which the remote client learns of;
/// false forgets an earlier one. Any thread.
void refreshQueue(bool changed);
/// What refreshQueue keeps of `changed`, alone: for the page, which shows its own changes itself. Any thread.
void setQueueChanged(bool changed);
/// True once after a change of the machine's own. Any thread.
bool takeQueueChanged();
