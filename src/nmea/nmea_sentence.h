#pragma once

#include <cstddef>
#include <string_view>

class CDataConnection;
class CNMEASentenceType;

/// Base of all parsed sentences. Objects are pooled and never deleted while the program runs: a field that Init does
/// not write keeps the value of the sentence before. Main thread only.
class CNMEASentence {
public:
    CNMEASentence() = default;
    CNMEASentence(const CNMEASentence&) = delete;
    CNMEASentence& operator=(const CNMEASentence&) = delete;
    virtual ~CNMEASentence() = default;
    /// Fills the fields from the text, which it overwrites. False: the sentence is of no use and is not published.
    virtual bool Init(char* text) = 0;

    CDataConnection* connection = nullptr; ///< where it came from; null when from no connection
    CNMEASentenceType* type = nullptr;
    CNMEASentence* pool_next = nullptr;
    unsigned use_count = 0; ///< a listener keeps the object by raising it, until its Release

    /// Ends one use. With the last one the object goes back to the pool.
    void Release();

    /// Takes one line (NUL-terminated, without CR and LF, in a buffer that may be overwritten) from its first "$" or
    /// "!" on to the listeners of its class and of CNMEA_Raw. 0: rejected by framing, checksum, the connection's input
    /// filter or the class, or of no interest to anybody.
    static int DispatchSentence(char* line, CDataConnection* connection);
    /// The same of a line of that length. Its characters and the one behind them are only altered when somebody
    /// listens.
    static int DispatchSentence(char* line, std::size_t length, CDataConnection* connection);

    /// Splits in place at "," into exactly `count` fields; the checksum never becomes part of one, and missing ones are
    /// empty. args[0] is the head ("$GPRMC").
    static void SplitArgs(char* text, int count, char** args);
    /// Degrees, north and east positive, from a coordinate field (ddmm.mmm, dddmm.mmm) and the hemisphere field behind
    /// it. 0 for an empty field or one without its leading zeroes. The field is altered.
    static double GetLat(char** fields);
    static double GetLon(char** fields);
    /// Seconds of the day, fractions dropped; 0 for an empty field.
    static int GetUTC(char* field);
    /// Start of the UTC day of ddmmyy, seconds since 1970; 0 for an empty field. Years 0 to 99 mean 2000 + year, 100 to
    /// 199 mean 1900 + year.
    static double GetDate(char* field);
    /// A number as the sentences write it; 0 for an empty field, for one that is not finite or beyond 1e9.
    static double GetNumber(const char* field);
    static float GetFloat(const char* field) { return static_cast<float>(GetNumber(field)); }
    /// A whole decimal number, as far as digits go; 0 for an empty field or one beyond 1e9.
    static int GetWhole(const char* field);
    /// A speed, limited to 1e6 to both sides.
    static float GetSpeed(const char* field);
    static float LimitSpeed(double speed);
    /// Whether the text carries a "*" and the right checksum behind it, in upper-case digits.
    static bool check_checksum(std::string_view text) { return FindRightChecksum(text) != nullptr; }
    /// Appends "*HH"; the buffer has room for 4 more bytes.
    static void compute_checksum(char* text);

protected:
    /// SplitArgs of the text that Init was given, whose end is known when it comes from DispatchSentence.
    void Split(char* text, int count, char** args) const;
    /// The "*" of that text, or its end when it has none.
    char* EndOfFields(char* text) const { return star != nullptr ? star : FindEndOfFields(text); }

private:
    friend class CSentenceInUse;
    static char* FindEndOfFields(char* text);
    /// The "*" of a text with the right checksum; else null.
    static const char* FindRightChecksum(std::string_view text);

    char* star = nullptr; ///< of the text, while Init reads it
};
