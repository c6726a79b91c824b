#pragma once
// Calls that block, made off the GUI thread while the screen stays alive.

#include <QEventLoop>
#include <QFutureWatcher>
#include <QThreadPool>
#include <QtConcurrent>

/// What `call` returns, made on a thread of the application's pool; events are handled meanwhile, so the
/// caller must be ready to be entered again. GUI thread.
template <class Call> auto offThread(Call call)
{
    using Result = decltype(call());
    QThreadPool pool; // the application's own may be full with tasks that never end
    QEventLoop loop;
    QFutureWatcher<Result> watcher;
    QObject::connect(&watcher, &QFutureWatcher<Result>::finished, &loop, &QEventLoop::quit);
    watcher.setFuture(QtConcurrent::run(&pool, call));
    loop.exec();
    return watcher.result();
}
