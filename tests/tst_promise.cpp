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

namespace {

enum class Reason { Disk };

struct Counted
{
    Counted() = default;
    Counted(const Counted& /*other*/) { ++copies; }
    Counted& operator=(const Counted&) = delete;
    ~Counted() = default;

    static inline int copies = 0;
};

// What a promise comes to, as text, so that one comparison tells the value or the reason.
template <typename T>
QString outcome(const QPromise<T>& promise)
{
    QString result = QStringLiteral("pending");
    const auto set = [&result](const char* name) { result = QString::fromLatin1(name); };
    promise.then([&](const auto&... value) { result = QVariant(value...).toString(); })
        .fail([&](const QString& reason) { result = QString(QLatin1Char('!') + reason); })
        .fail([&](int reason) { result = QString(QLatin1Char('!') + QString::number(reason)); })
        .fail([&](Reason) { set("!disk"); })
        .fail([&](const QPromiseTimeoutException&) { set("!timeout"); })
        .fail([&](const QPromiseContextException&) { set("!context"); })
        .fail([&](const QPromiseUndefinedException&) { set("!undefined"); })
        .fail([&](const std::exception& reason) { set(reason.what()); })
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
    QPromise<T> promise {[this](const QPromiseResolve<T>& first, const QPromiseReject<T>& second) {
        resolve = std::make_unique<QPromiseResolve<T>>(first);
        reject = std::make_unique<QPromiseReject<T>>(second);
    }};
};

template <typename E>
QPromise<int> rejected(const E& reason)
{
    return QPromise<int>::reject(reason);
}

} // namespace

class Emitter : public QObject
{
    Q_OBJECT

Q_SIGNALS:
    void done(const QString& text, int number);
    void ready();
    void failed(int code);
    void broken();
};

class tst_promise : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void settlesOnce()
    {
        Open<int> open;
        const QPromise<int> copy = open.promise;
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
        (*inner.reject)(Reason::Disk);
        COMES_TO("!disk", outer.promise);

        const QPromise<int> threw([](auto resolve) {
            resolve(7);
            throw 8;
        });
        COMES_TO("7", threw);
    }

    void handlersRunLaterAndInOrder()
    {
        QStringList order;
        const auto note = [&](const char* name) {
            return [&order, name] { order << QString::fromLatin1(name); };
        };
        const auto promise = QPromise<void>::resolve();
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
        const QPromise<QString> otherType =
            five.then([](auto value) { return QString::number(value); });
        COMES_TO("5", otherType);
        COMES_TO("5", five.then([](int value) { return QtPromise::resolve(value).delay(1); }));
        COMES_TO("5", five.then(nullptr, [] { return 9; }));
        COMES_TO("!5", five.then([](auto value) { throw QString::number(value); }));
        COMES_TO("5", rejected(4).then([] { return 1; }, [](int code) { return code + 1; }));
        // An error that its neighbour throws is not for the second handler.
        COMES_TO("!1", five.then([]() -> int { throw 1; }, [] { return 2; }));
        const QPromise<void> converted = five;
        QVERIFY(converted.isFulfilled());
        COMES_TO("!4", QPromise<void>(rejected(4)));

        auto owner = std::make_unique<int>(3);
        const auto moved = five.then([owner = std::move(owner)](int value) {
            return std::make_unique<int>(value + *owner);
        });
        COMES_TO("8", moved.then([](const std::unique_ptr<int>& value) { return *value; }));
        QPromise<int> self = five;
        self = five.then([&] { return self; });
        COMES_TO("!undefined", self);
    }

    void reasons()
    {
        COMES_TO("!undefined", QPromise<int>::reject());
        COMES_TO("!undefined", rejected(std::exception_ptr()));
        COMES_TO("!6", rejected(std::make_exception_ptr(6)));
        COMES_TO("!undefined", QPromise<void>([](auto, auto reject) { reject(); }));

        const QPromise<int> derived([](auto) { throw std::out_of_range("range"); });
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
        QCOMPARE(seen, 2);
        QVERIFY(held.isPending());
        (*gate.resolve)();
        COMES_TO("5", held);
        COMES_TO("!1", five.finally([] { return rejected(1); }));
        COMES_TO("!2", four.finally([] { throw 2; }));

        const auto see = [&](int value) { seen += 10 * value; };
        COMES_TO("5", five.tap(see).tapFail(see));
        QCOMPARE(seen, 52);
        COMES_TO("!4", four.tap(see).tapFail(see));
        QCOMPARE(seen, 92);
        COMES_TO("!4", four.tapFail([](const QString&) { throw 9; }));
        COMES_TO("!3", five.tap([] { throw 3; }));
    }

    void time()
    {
        QElapsedTimer clock;
        clock.start();
        COMES_TO("!4", rejected(4).delay(60s));
        COMES_TO("5", QtPromise::resolve(5).timeout(60000));
        QVERIFY(clock.elapsed() < 30000);
        clock.restart();
        COMES_TO("5", QtPromise::resolve(5).delay(50));
        QVERIFY(clock.elapsed() >= 45);
        // Nobody is left who could settle these, yet the time runs.
        COMES_TO("!timeout", Open<int>().promise.timeout(1ms));
        COMES_TO("!disk", Open<void>().promise.timeout(1, Reason::Disk));
    }

    void helpers()
    {
        const auto later = [](int value, int time) {
            return QtPromise::resolve(value).delay(time);
        };
        const auto three = all(QVector<QPromise<int>> {later(1, 20), later(2, 1), later(3, 10)});
        COMES_TO("123", three.then([](auto v) { return v[0] * 100 + v[1] * 10 + v[2]; }));
        QVERIFY(all(QList<QPromise<int>>()).isFulfilled());
        const Open<int> never;
        const std::vector<QPromise<int>> bad {later(1, 0), never.promise, rejected(3), rejected(4)};
        COMES_TO("!3", all(bad).then([] {}));
        QVERIFY(all(QVector<QPromise<void>>()).isFulfilled());
        Open<void> last;
        const auto both = all(QVector<QPromise<void>> {last.promise, later(1, 0)});
        COMES_TO("1", later(1, 5));
        QVERIFY(both.isPending());
        (*last.resolve)();
        COMES_TO("", both);

        QVERIFY(QtPromise::resolve(both) == both);
        COMES_TO("!disk", attempt([] { throw Reason::Disk; }));
        COMES_TO("8", attempt(later, 8, 1));
    }

    void signalAsPromise()
    {
        auto emitter = std::make_unique<Emitter>();
        Emitter other;
        const auto done = QtPromise::connect(emitter.get(), &Emitter::done, &Emitter::failed);
        const auto ready =
            QtPromise::connect(emitter.get(), &Emitter::ready, &other, &Emitter::broken);
        const auto lost = QtPromise::connect(emitter.get(), &Emitter::ready);
        Q_EMIT other.broken();
        Q_EMIT emitter->done(QStringLiteral("text"), 1);
        Q_EMIT emitter->failed(2);
        emitter.reset();
        COMES_TO("text", done);
        COMES_TO("!undefined", ready);
        COMES_TO("!context", lost);
    }

    void sharedNotCopied()
    {
        Counted::copies = 0;
        const auto pass = [](const Counted&) {};
        Open<Counted> open;
        const auto chain = open.promise.tap(pass).finally([] {}).fail([] { return Counted(); });
        const auto end = QPromise<Counted>::resolve(chain).delay(0).timeout(5000).then(pass);
        (*open.resolve)(Counted());
        end.wait();
        QVERIFY(end.isFulfilled());
        QCOMPARE(Counted::copies, 1); // into the promise: this type cannot be moved
        chain.then([](Counted) {}).wait();
        QCOMPARE(Counted::copies, 2);
    }

    void lifetimes()
    {
        // Only the resolver is left: the handlers run, and are freed even while the promise lives.
        const auto token = std::make_shared<int>();
        int ran = 0;
        auto open = std::make_unique<Open<int>>();
        const auto resolve = *open->resolve;
        open->promise.then([&ran, token, self = open->promise] { ++ran; });
        open.reset();
        resolve(1);
        QTRY_COMPARE(ran, 1);
        QTRY_COMPARE(token.use_count(), 1L);
        // Nobody is left to settle: the handlers are freed unrun.
        Open<int>().promise.then([&ran, token] { ++ran; }).fail([token] { return; });
        QCOMPARE(token.use_count(), 1L);
        QCOMPARE(ran, 1);

        // What is settled is held by its promises alone: not by resolvers that somebody keeps, and
        // not by a wait, whether it came too late or ran its loop.
        for (const bool early : {true, false}) {
            Open<std::shared_ptr<int>> kept;
            const auto settle = [&] { (*kept.resolve)(token); };
            early ? settle() : QTimer::singleShot(0, this, settle);
            QCOMPARE(kept.promise.wait().isFulfilled(), true);
            kept.promise = QPromise<std::shared_ptr<int>>::reject();
            QVERIFY2(token.use_count() == 1, early ? "settled early" : "settled in the wait");
        }
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
            const auto end = open.promise.then(count, count).wait();
            for (auto& thread : threads) {
                thread.join();
            }
            QCoreApplication::processEvents();
            QVERIFY(end.isFulfilled());
            QCOMPARE(handled, 1);
        }
    }

    void handlersStayInTheirThread()
    {
        Open<int> open;
        const Open<int> never;
        std::atomic<QThread*> ranIn {nullptr};
        std::atomic<QThread*> freedIn {nullptr};
        std::atomic<bool> added {false};
        std::atomic<bool> waits {false};
        const auto token = std::make_shared<int>();
        std::atomic<long> held {0};
        const std::unique_ptr<QThread> thread(QThread::create([&] {
            std::shared_ptr<int> guard(new int, [&freedIn](const int* value) {
                delete value;
                freedIn = QThread::currentThread();
            });
            open.promise.then(
                [&ranIn, guard = std::move(guard)] { ranIn = QThread::currentThread(); });
            added = true;
            open.promise.wait();
            waits = true;
            never.promise.wait();
            // Broken off, a wait holds nothing of a promise that is settled afterwards.
            Open<std::shared_ptr<int>> late;
            late.promise.wait();
            (*late.resolve)(token);
            late.promise = QPromise<std::shared_ptr<int>>::reject();
            held = token.use_count();
        }));
        thread->start();
        QTRY_VERIFY(added);
        (*open.resolve)(1);
        QTRY_COMPARE(freedIn.load(), thread.get());
        QCOMPARE(ranIn.load(), thread.get());

        // A thread that is told to end does not hang in a wait.
        QTRY_VERIFY(waits);
        thread->quit();
        QVERIFY(thread->wait(30000));
        QVERIFY(never.promise.isPending());
        QCOMPARE(held.load(), 1L);
    }

    void threadEndsFirst()
    {
        // Settled before the thread ends without a loop, and after: handlers are freed unrun.
        QTest::ignoreMessage(QtWarningMsg,
                             "QObject::startTimer: Timers can only be used with threads "
                             "started with QThread");
        const auto token = std::make_shared<int>();
        Open<int> open;
        std::atomic<int> ran {0};
        std::thread([&] {
            open.promise.then([&ran, token] { ++ran; });
            QtPromise::resolve(1).then([&ran, token] { ++ran; });
            QtPromise::resolve(1).delay(0).timeout(1).then([&ran, token] { ++ran; });
        }).join();
        (*open.resolve)(1);
        COMES_TO("1", open.promise);
        QCOMPARE(ran.load(), 0);
        QCOMPARE(token.use_count(), 1L);
    }
};

QTEST_GUILESS_MAIN(tst_promise)
#include "tst_promise.moc"
