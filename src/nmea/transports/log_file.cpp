#include "nmea/transports/log_file.h"

#include "core/files.h"

CNMEALogfile::CNMEALogfile()
{
    Listener<ShutDown>::Connect();
}

CNMEALogfile::~CNMEALogfile()
{
    Close();
}

bool CNMEALogfile::Setup(const std::string& log_path)
{
    path = log_path;
    const bool writable = Open();
    Close();
    return writable;
}

bool CNMEALogfile::Open()
{
    Close();
    file = openRegularFile(path, "w");
    if (file == nullptr) {
        status = "File open error";
        return false;
    }
    closed = false;
    return true;
}

void CNMEALogfile::Close()
{
    if (file == nullptr) return;
    std::fclose(file);
    file = nullptr;
    closed = true;
}

bool CNMEALogfile::Output(const char* text)
{
    return file != nullptr && *text != '\0' && std::fputs(text, file) >= 0;
}

void CNMEALogfile::OnUpdate(ShutDown&)
{
    if (file != nullptr) std::fputs("\n---- Power Down-----\n\n\n", file);
    Close();
}
