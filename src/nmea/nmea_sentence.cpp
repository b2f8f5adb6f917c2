#include "nmea/nmea_sentence.h"

#include "nmea/data_connection.h"
#include "nmea/nmea_sentence_type.h"

namespace {

char* StartOf(char* line)
{
    while (*line != 0 && *line != '$' && *line != '!') ++line;
    return *line != 0 ? line : nullptr;
}

bool IsAllowed(const CDataConnection* connection, const char* text)
{
    bool allowed = true;
    if (connection != nullptr) connection->input_filter.apply(text, allowed);
    return allowed;
}

/// A sentence object for the time of one dispatch. A listener that keeps it keeps it out of the pool.
class CSentenceInUse {
public:
    CSentenceInUse(CNMEASentenceType& type, CDataConnection* connection) : sentence(type.GetInstance())
    {
        ++sentence->use_count;
        sentence->connection = connection;
    }
    CSentenceInUse(const CSentenceInUse&) = delete;
    CSentenceInUse& operator=(const CSentenceInUse&) = delete;
    ~CSentenceInUse() { sentence->Release(); }
    CNMEASentence* operator->() const { return sentence; }
    CNMEASentence* get() const { return sentence; }

private:
    CNMEASentence* sentence;
};

/// What became of a sentence at its listeners.
struct COutcome {
    bool usable;
    bool handled; ///< a listener stopped the dispatch: the text goes no further
};

/// Parses and publishes when somebody listens for the type; null is no type.
COutcome Publish(CNMEASentenceType* type, char* text, CDataConnection* connection)
{
    if (type == nullptr || *type->source == nullptr) return {false, false};
    const CSentenceInUse sentence(*type, connection);
    if (!sentence->Init(text)) return {false, false};
    if (*type->source != nullptr) (*type->source)->Dispatch(sentence.get());
    return {true, *type->source != nullptr && (*type->source)->stop};
}

/// The same, and the text on to the raw listeners unless a listener of its type handled it.
[[gnu::noinline]] int PublishWithText(CNMEASentenceType* type, char* text, CDataConnection* connection)
{
    CNMEA_Raw raw; // before parsing, which overwrites the text
    raw.source = connection;
    raw.Init(text);
    const COutcome outcome = Publish(type, text, connection);
    if (outcome.handled) return outcome.usable ? 1 : 0;
    DispatchToListeners(raw);
    return 1;
}

} // namespace

void CNMEASentence::Release()
{
    if (--use_count != 0) return;
    pool_next = type->pool;
    type->pool = this;
}

int CNMEASentence::DispatchSentence(char* line, CDataConnection* connection)
{
    char* text = StartOf(line);
    if (text == nullptr || !check_checksum(text) || !IsAllowed(connection, text)) return 0;
    CNMEASentenceType* type = CNMEASentenceType::FindType(text);
    if (connection != nullptr && Listener<CNMEA_Raw>::pDatasource != nullptr)
        return PublishWithText(type, text, connection);
    return Publish(type, text, connection).usable ? 1 : 0;
}
