#include "core/attributes.h"
#include "core/listener.h"
#include "core/serializable.h"
#include "ratio.h"

#include <memory>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// A track point as it is filed, 32 bytes.
struct CPointRecord {
    double lat = 54.0;
    double lon = 10.0;
    double time = 1.7e9;
    float speed = 5.0F;
    float depth = 10.0F;
};
static_assert(sizeof(CPointRecord) == 32);

constexpr std::size_t kPoints = 1'000'000;
constexpr std::size_t kPointsInSection = 64;

/// A million track points in sections of 64, the way tracks are filed.
class CPointFile : public CSerializable {
public:
    std::vector<CPointRecord> points = std::vector<CPointRecord>(kPoints);

    bool Serialize(IOStream& stream) override
    {
        const Section section(stream);
        for (std::size_t i = 0; i < points.size(); i += kPointsInSection) {
            Section part(stream);
            auto count = static_cast<int>(std::min(kPointsInSection, points.size() - i));
            if (!part.declare(count) || !part.declare_array(&points[i], sizeof(CPointRecord), count)) return false;
        }
        return stream.ok();
    }
};

/// Files in memory (tmpfs), so that no disk is measured.
struct CTypedFileScene {
    CTypedFileScene()
    {
        file.WriteFile(path, {}, 1);
        struct stat status {};
        stat(path.c_str(), &status);
        bytes.resize(static_cast<std::size_t>(status.st_size));
        ReadBytes();
    }
    ~CTypedFileScene()
    {
        unlink(path.c_str());
        unlink(plain.c_str());
    }
    void ReadBytes()
    {
        const int handle = open(path.c_str(), O_RDONLY);
        if (read(handle, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size())) std::abort();
        close(handle);
    }
    /// The same steps around one write of the same bytes.
    void WriteBytes()
    {
        const std::string temporary = plain + ".tmp";
        const int handle = open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
        if (write(handle, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size())) std::abort();
        fsync(handle);
        close(handle);
        rename(temporary.c_str(), plain.c_str());
    }

    const std::string path = "/dev/shm/zentara_bench.zttf";
    const std::string plain = "/dev/shm/zentara_bench.plain";
    CPointFile file;
    std::vector<char> bytes;
};

/// Text of which one byte in four is escaped.
struct CEscapeScene {
    CEscapeScene()
    {
        for (std::size_t i = 0; i < text.size(); ++i) text[i] = i % 4 == 0 ? '&' : static_cast<char>('a' + i % 26);
        escaped = escape_string(text);
    }
    std::string text = std::string(1U << 20, ' ');
    std::string escaped;
    std::string copy = text;
};

/// What is published: listeners count it.
struct CTick {
    int seen = 0;
};

/// A message that nobody listens for.
struct CUnheard {};

class CTickListener : public Listener<CTick> {
public:
    void OnUpdate(CTick& tick) override { ++tick.seen; }
};

/// Eight listeners, as many as a position has, of two classes, so that no compiler sees through the calls.
struct CPublishScene {
    class COther : public CTickListener {
    public:
        void OnUpdate(CTick& tick) override { tick.seen += 2; }
    };

    static constexpr int kPublished = 10'000; ///< in one piece of work

    CPublishScene()
    {
        for (CTickListener* listener : listeners) listener->Connect();
    }
    ~CPublishScene()
    {
        for (CTickListener* listener : listeners) listener->Disconnect();
    }
    void CallDirectly()
    {
        for (int i = 0; i < kPublished; ++i) {
            for (CTickListener* listener : listeners) listener->OnUpdate(tick);
            asm volatile("" ::: "memory");
        }
    }

    CTick tick;
    CTickListener plain[4];
    COther others[4];
    CTickListener* listeners[8] = {plain, plain + 1, plain + 2, plain + 3, others, others + 1, others + 2, others + 3};
};

template <class Scene>
Scene& TheScene()
{
    static Scene scene;
    return scene;
}

const bool core_rows = [] {
    RegisterRatio(
        "files/typed_write_1e6_points",
        [] {
            auto& s = TheScene<CTypedFileScene>();
            if (!s.file.WriteFile(s.path, {}, 1)) std::abort();
        },
        "one write of the same bytes", [] { TheScene<CTypedFileScene>().WriteBytes(); });
    RegisterRatio(
        "files/typed_read_1e6_points",
        [] {
            auto& s = TheScene<CTypedFileScene>();
            if (!s.file.ReadFile(s.path, {}, 1)) std::abort();
        },
        "one read of the same bytes", [] { TheScene<CTypedFileScene>().ReadBytes(); });
    RegisterRatio(
        "attributes/escape_1_MiB", [] { escape_string(TheScene<CEscapeScene>().text); }, "memory copy",
        [] {
            auto& s = TheScene<CEscapeScene>();
            std::memcpy(s.copy.data(), s.text.data(), s.text.size());
            asm volatile("" ::"r"(s.copy.data()) : "memory");
        });
    RegisterRatio(
        "attributes/unescape_1_MiB", [] { unescape_string(TheScene<CEscapeScene>().escaped); }, "memory copy",
        [] {
            auto& s = TheScene<CEscapeScene>();
            std::memcpy(s.copy.data(), s.text.data(), s.text.size());
            asm volatile("" ::"r"(s.copy.data()) : "memory");
        });
    RegisterRatio(
        "events/publish_to_8",
        [] {
            auto& s = TheScene<CPublishScene>();
            for (int i = 0; i < CPublishScene::kPublished; ++i) DispatchToListeners(s.tick);
        },
        "8 virtual calls", [] { TheScene<CPublishScene>().CallDirectly(); });
    RegisterRatio(
        "events/publish_to_none",
        [] {
            CUnheard unheard;
            for (int i = 0; i < CPublishScene::kPublished; ++i) {
                DispatchToListeners(unheard);
                asm volatile("" ::: "memory");
            }
        },
        "8 virtual calls", [] { TheScene<CPublishScene>().CallDirectly(); });
    return true;
}();

} // namespace
