// Where programming errors end: a fixed message with the source file and the line of the check.
//
// Assertions are part of the product's behaviour and are active in our builds; one that defines
// NS_BLOCK_ASSERTIONS goes without them. The default handler prints the failure and ends the process. A
// handler that returns lets the code after the failing check run, which every check must be prepared for.
#pragma once

#include "platform/foundation/FoundationTypes.h"

#include <functional>

struct NSAssertionFailure {
    NSString message; // with its arguments filled in
    NSString source; // the class or category that made the check
    int line = 0;
};

class NSAssertionHandler {
public:
    using Handler = std::function<void(const NSAssertionFailure&)>;

    // Reports a failure to the handler in force. Safe from any thread. Only the macros below call it, so that
    // a build without assertions has none.
    static void handleFailure(const NSAssertionFailure&);

    // Puts a handler in force until the guard goes; guards nest.
    class [[nodiscard]] Replacement {
    public:
        explicit Replacement(Handler);
        ~Replacement();
        Replacement(const Replacement&) = delete;
        Replacement& operator=(const Replacement&) = delete;

    private:
        Handler m_previous;
    };
};

#ifdef NS_BLOCK_ASSERTIONS
#define NS_ASSERTION_FAILS(condition) (false && !(condition))
#else
#define NS_ASSERTION_FAILS(condition) (!(condition))
#endif

// Reports when the condition does not hold; execution goes on when the handler returns.
#define NSCAssert(condition, source, message) NSCAssertAtLine(condition, source, __LINE__, message)

// The same with a line of its own: tools that collect reports know some failures by it, wherever the check
// stands.
#define NSCAssertAtLine(condition, source, reportedLine, message)                                            \
    do {                                                                                                     \
        if (NS_ASSERTION_FAILS(condition))                                                                   \
            NSAssertionHandler::handleFailure({ message, QStringLiteral(source), reportedLine });            \
    } while (false)

// The fixed wording for an argument that a method does not take.
#define NSParameterAssert(condition, source, conditionText)                                                  \
    NSCAssert(condition, source, QStringLiteral("Invalid parameter not satisfying: " conditionText))
