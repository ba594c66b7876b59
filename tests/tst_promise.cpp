#include "support/Patience.h"

#include <QtPromise>

#include <QElapsedTimer>
#include <QThread>
#include <QVariant>
#include <QtTest>

#include <array>
#include <atomic>
#include <stdexcept>
#include <thread>

using namespace QtPromise;
using namespace std::chrono_literals;
template <typename T>
using Promise = QtPromise::QPromise<T>;

namespace {

// What a promise comes to, as text, so that one comparison tells the value or the reason.
template <typename T>
QString outcome(const Promise<T>& promise)
{
    QString result = QStringLiteral("pending");
    promise.then([&](const auto&... value) { result = QVariant(value...).toString(); })
        .fail([&](const QString& reason) { result = QString(QLatin1Char('!') + reason); })
        .fail([&](int reason) { result = QString(QLatin1Char('!') + QString::number(reason)); })
        .fail([&](const QPromiseTimeoutException&) { result = QStringLiteral("!timeout"); })
        .fail([&](const QPromiseContextException&) { result = QStringLiteral("!context"); })
        .fail([&](const QPromiseUndefinedException&) { result = QStringLiteral("!undefined"); })
        .fail([&](const std::exception& reason) { result = QString::fromLatin1(reason.what()); })
        .wait();
    return result;
}
#define COMES_TO(expected, ...) QCOMPARE(outcome(__VA_ARGS__), QStringLiteral(expected))

// A promise to be settled by hand.
template <typename T>
struct Open
{
    std::unique_ptr<QPromiseResolve<T>> resolve;
    std::unique_ptr<QPromiseReject<T>> reject;
    Promise<T> promise {[this](const QPromiseResolve<T>& first, const QPromiseReject<T>& second) {
        resolve = std::make_unique<QPromiseResolve<T>>(first);
        reject = std::make_unique<QPromiseReject<T>>(second);
    }};
};

template <typename Reason>
Promise<int> rejected(const Reason& reason)
{
    return Promise<int>::reject(reason);
}

} // namespace

class Emitter : public QObject
{
    Q_OBJECT

Q_SIGNALS:
    void done(const QString& text, int number);
    void failed(int code);
};

class tst_promise : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void settlesOnce()
    {
        Open<int> open;
        const Promise<int> copy = open.promise;
        QVERIFY(copy == open.promise && copy != Open<int>().promise && copy.isPending());
        (*open.resolve)(1);
        (*open.resolve)(2);
        (*open.reject)(3);
        QVERIFY(copy.isFulfilled() && !copy.isRejected() && !copy.isPending());
        COMES_TO("1", copy);

        // Following another promise uses up the one go as well.
        Open<int> outer;
        Open<int> inner;
        (*outer.resolve)(inner.promise);
        (*outer.resolve)(5);
        QVERIFY(outer.promise.isPending());
        (*inner.reject)(4);
        COMES_TO("!4", outer.promise);
        COMES_TO("7", Promise<int>([](auto resolve) {
                     resolve(7);
                     throw 8;
                 }));
    }

    void handlersRunLaterAndInOrder()
    {
        QStringList order;
        const auto note = [&](const char* name) {
            return [&order, name] { order << QString::fromLatin1(name); };
        };
        const auto promise = Promise<void>::resolve();
        promise.then(note("a")).then(note("c"));
        const auto last = promise.then(note("b")).then(note("d"));
        QVERIFY(order.isEmpty());
        // A nested loop in a handler must not hold up what is due.
        promise.then([&] { last.wait(); }).then(note("e")).wait();
        QCOMPARE(order.join(QString()), QStringLiteral("abcde"));
    }

    void chain()
    {
        const auto five = QtPromise::resolve(5);
        COMES_TO("5", five.then([](int value) { return QtPromise::resolve(value).delay(1); }));
        COMES_TO("5", five.then(nullptr, [] { return 9; }));
        COMES_TO("!5", five.then([](auto value) { throw QString::number(value); }));
        COMES_TO("5", rejected(4).then([] { return 1; }, [](int code) { return code + 1; }));
        // An error that its neighbour throws is not for the second handler.
        COMES_TO("!1", five.then([]() -> int { throw 1; }, [] { return 2; }));
        COMES_TO("!4", Promise<void>(rejected(4)));
        Promise<int> self = five;
        self = five.then([&] { return self; });
        COMES_TO("!undefined", self);

        // What cannot be copied comes through all of them.
        const auto moved = five.then([owner = std::make_unique<int>(3)](int value) {
            return std::make_unique<int>(value + *owner);
        });
        const auto passed = moved.tap([] {}).tapFail([] {}).finally([] {}).delay(0).timeout(60000);
        COMES_TO("8", passed.then([](const std::unique_ptr<int>& value) { return *value; }));
    }

    void reasons()
    {
        COMES_TO("!undefined", Promise<void>([](auto, auto reject) { reject(); }));
        COMES_TO("!undefined", rejected(std::exception_ptr()));
        const Promise<int> derived([](auto) { throw std::out_of_range("range"); });
        COMES_TO("range", derived.fail([](const std::length_error&) { return 1; }));
        COMES_TO("2", derived.fail([](std::logic_error&) { return 2; }));
        COMES_TO("range", derived.fail([](const std::exception&) -> int { throw; }));
        COMES_TO("!7", derived.fail([] { return rejected(7); }));
        COMES_TO("range", derived.fail([](std::exception_ptr reason) { return rejected(reason); }));
        COMES_TO("3", QtPromise::resolve(3).fail([] { return 4; }));
    }

    void lookingOn()
    {
        const auto five = QtPromise::resolve(5);
        const auto four = rejected(4);
        int seen = 0;
        Open<void> gate;
        const auto held = five.finally([&] { return gate.promise; });
        COMES_TO("5", five.finally([&] { return ++seen; }));
        COMES_TO("!4", four.finally([&] { ++seen; }));
        QVERIFY(held.isPending());
        (*gate.resolve)();
        COMES_TO("5", held);
        COMES_TO("!1", five.finally([] { return rejected(1); }));

        const auto see = [&](int value) { seen += 10 * value; };
        COMES_TO("5", five.tap(see).tapFail(see));
        COMES_TO("!4", four.tap(see).tapFail(see));
        QCOMPARE(seen, 92);
        COMES_TO("!4", four.tapFail([](const QString&) { throw 9; }));
        COMES_TO("!3", five.tap([] { throw 3; }));
    }

    void time()
    {
        QElapsedTimer clock;
        clock.start();
        COMES_TO("5", QtPromise::resolve(5).delay(50));
        QVERIFY(clock.elapsed() >= 45);
        // Nobody is left who could settle this, yet the time runs.
        COMES_TO("!timeout", Open<int>().promise.timeout(1ms));
    }

    void helpers()
    {
        const auto later = [](int value, int time) {
            return attempt([=] { return value; }).delay(time);
        };
        const auto three = all(QVector<Promise<int>> {later(1, 20), later(2, 1), later(3, 10)});
        COMES_TO("123", three.then([](auto v) { return v[0] * 100 + v[1] * 10 + v[2]; }));
        QVERIFY(all(QList<Promise<int>>()).isFulfilled());
        const Open<int> never;
        const std::vector<Promise<int>> bad {later(1, 0), never.promise, rejected(3), rejected(4)};
        COMES_TO("!3", all(bad).then([] {}));
        Open<void> last;
        const auto both = all(QVector<Promise<void>> {last.promise, later(1, 0)});
        COMES_TO("1", later(1, 5));
        QVERIFY(both.isPending());
        (*last.resolve)();
        COMES_TO("", both);

        auto sender = std::make_unique<Emitter>();
        const auto failed = QtPromise::connect(sender.get(), &Emitter::done, &Emitter::failed);
        const auto done = QtPromise::connect(sender.get(), &Emitter::done);
        Q_EMIT sender->failed(2);
        Q_EMIT sender->done(QStringLiteral("text"), 1);
        const auto lost = QtPromise::connect(sender.get(), &Emitter::done);
        sender.reset();
        COMES_TO("!2", failed);
        COMES_TO("text", done);
        COMES_TO("!context", lost);
    }

    void lifetimes()
    {
        // Only the resolver is left: the handlers run, and are freed even while the promise lives.
        const auto token = std::make_shared<int>();
        int ran = 0;
        auto open = std::make_unique<Open<int>>();
        open->promise.then([&ran, token, self = open->promise] { ++ran; });
        const auto resolve = *open->resolve;
        open.reset();
        resolve(1);
        QTRY_COMPARE(ran, 1);
        QTRY_COMPARE(token.use_count(), 1L);
        // Nobody is left to settle: the handlers are freed unrun.
        Open<int>().promise.then([&ran, token] { ++ran; }).fail([token] { return; });
        QCOMPARE(token.use_count(), 1L);
        QCOMPARE(ran, 1);

        // What is settled is held by its promises alone, not by resolvers or a wait.
        Open<std::shared_ptr<int>> kept;
        QTimer::singleShot(0, this, [&] { (*kept.resolve)(token); });
        QVERIFY(kept.promise.wait().isFulfilled());
        kept.promise = Promise<std::shared_ptr<int>>::reject();
        QCOMPARE(token.use_count(), 1L);
    }

    void settledFromManyThreads()
    {
        for (int round = 0; round < 100; ++round) {
            Open<int> open;
            std::array<std::thread, 4> threads;
            for (auto& thread : threads) {
                thread = std::thread([resolve = *open.resolve, reject = *open.reject] {
                    resolve(1);
                    reject(2);
                });
            }
            int handled = 0;
            const auto count = [&handled](int) { ++handled; };
            QVERIFY(open.promise.then(count, count).wait().isFulfilled());
            for (auto& thread : threads)
                thread.join();
            QCoreApplication::processEvents();
            QCOMPARE(handled, 1);
        }
    }

    void handlersStayInTheirThread()
    {
        Open<int> open;
        std::atomic<QThread*> ranIn {nullptr};
        std::atomic<QThread*> freedIn {nullptr};
        std::atomic<bool> added {false};
        const std::unique_ptr<QThread> thread(QThread::create([&] {
            std::shared_ptr<int> guard(new int, [&freedIn](const int* value) {
                delete value;
                freedIn = QThread::currentThread();
            });
            open.promise.then([&, guard = std::move(guard)] { ranIn = QThread::currentThread(); });
            added = true;
            Open<int>().promise.wait(); // until the thread is told to end
        }));
        thread->start();
        QTRY_VERIFY(added);
        (*open.resolve)(1);
        QTRY_COMPARE(freedIn.load(), thread.get());
        QCOMPARE(ranIn.load(), thread.get());
        thread->quit();
        QVERIFY(thread->wait(30000));
    }
};

QTEST_GUILESS_MAIN(tst_promise)
#include "tst_promise.moc"
