#include "nmea/nmea_sentence.h"

#include "nmea/data_connection.h"
#include "nmea/nmea_sentence_type.h"

#include <algorithm>
#include <cstring>

namespace {

bool IsStart(char c)
{
    return c == '$' || c == '!';
}

bool IsAllowed(const CDataConnection* connection, const char* text)
{
    bool allowed = true;
    if (connection != nullptr) connection->input_filter.apply(text, allowed);
    return allowed;
}

} // namespace

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
    bool Init(char* text, char* star) const
    {
        sentence->star = star;
        const bool usable = sentence->Init(text);
        sentence->star = nullptr;
        return usable;
    }
    CNMEASentence* get() const { return sentence; }

private:
    CNMEASentence* sentence;
};

namespace {

/// What became of a sentence at its listeners.
struct COutcome {
    bool usable;
    bool handled; ///< a listener stopped the dispatch: the text goes no further
};

/// Parses and publishes when somebody listens for the type; null is no type.
COutcome Publish(CNMEASentenceType* type, char* text, char* star, CDataConnection* connection)
{
    if (type == nullptr || *type->source == nullptr) return {false, false};
    const CSentenceInUse sentence(*type, connection);
    if (!sentence.Init(text, star)) return {false, false};
    if (*type->source != nullptr) (*type->source)->Dispatch(sentence.get());
    return {true, *type->source != nullptr && (*type->source)->stop};
}

/// The same, and the text on to the raw listeners unless a listener of its type handled it.
[[gnu::noinline]] int PublishWithText(CNMEASentenceType* type, char* text, char* star, CDataConnection* connection)
{
    CNMEA_Raw raw; // before parsing, which overwrites the text
    raw.source = connection;
    raw.Init(text);
    const COutcome outcome = Publish(type, text, star, connection);
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
    return DispatchSentence(line, std::strlen(line), connection);
}

int CNMEASentence::DispatchSentence(char* line, std::size_t length, CDataConnection* connection)
{
    char* const end = line + length;
    char* const start = IsStart(*line) ? line : std::find_if(line, end, IsStart);
    const std::string_view text(start, static_cast<std::size_t>(end - start));
    const char* const found = FindRightChecksum(text);
    if (found == nullptr) return 0;
    char* const star = line + (found - line);
    CNMEASentenceType* const type = CNMEASentenceType::FindType(text);
    const bool is_copied = connection != nullptr && Listener<CNMEA_Raw>::pDatasource != nullptr;
    if (!is_copied && (type == nullptr || *type->source == nullptr)) return 0;
    *end = 0;
    if (!IsAllowed(connection, start)) return 0;
    return is_copied ? PublishWithText(type, start, star, connection) : Publish(type, start, star, connection).usable;
}
