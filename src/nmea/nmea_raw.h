#pragma once

class CDataConnection;

/// A sentence as text, on its way to be transmitted. Published through Listener<CNMEA_Raw>. Main thread only.
struct CNMEA_Raw {
    static constexpr int kSize = 200;

    CDataConnection* source = nullptr; ///< where the text came from; null for text that the program made
    char text[kSize] = {};             ///< the sentence with CR and LF

    /// Takes the text and appends CR LF. A text above 197 characters leaves the record empty and gives false.
    bool Init(const char* from);
    /// Whether the stored text has `prefix` at `index`.
    bool Matches(int index, const char* prefix) const;
    /// Completes a sentence that stands in `text` without checksum and publishes it; one above 194 characters is
    /// dropped.
    void AddChecksumAndDispatch();
};
