#include "nmea/nmea_sentence.h"

#include "nmea/data_connection.h"
#include "nmea/nmea_sentence_type.h"

#include <optional>

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

COutcome Publish(CNMEASentenceType& type, char* text, CDataConnection* connection)
{
    const CSentenceInUse sentence(type, connection);
    if (!sentence->Init(text)) return {false, false};
    if (*type.source != nullptr) (*type.source)->Dispatch(sentence.get());
    return {true, *type.source != nullptr && (*type.source)->stop};
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

    // Taken before parsing, which overwrites the text.
    std::optional<CNMEA_Raw> raw;
    if (connection != nullptr && Listener<CNMEA_Raw>::pDatasource != nullptr) {
        raw.emplace();
        raw->source = connection;
        raw->Init(text);
    }

    CNMEASentenceType* type = CNMEASentenceType::FindType(text);
    COutcome outcome{false, false};
    if (type != nullptr && *type->source != nullptr) outcome = Publish(*type, text, connection);
    if (!raw || outcome.handled) return outcome.usable ? 1 : 0;
    DispatchToListeners(*raw);
    return 1;
}
