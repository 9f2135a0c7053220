// A raw stream as something to look at.
#include "raw_stream.h"
#include "source.h"

#include <filesystem>

namespace view {

namespace {

class StreamSource : public Source {
public:
    StreamSource(const std::string& name, uint32_t format, tool::Size size)
        : name_(name == "-" ? "standard input" : std::filesystem::path(name).filename().string()),
          stream_(name, format, size), frame_(stream_.blank())
    {
        stream_.read(frame_);
    }

    std::string title() const override
    {
        return name_ + ", frame " + std::to_string(count_) +
               (ended_ || (ahead_ && ahead_->ended()) ? ", ended" : "");
    }
    tool::Size size() const override { return frame_.size(); }
    uint32_t format() const override { return frame_.format(); }

    bool advance() override
    {
        const bool more = ahead_ ? ahead_->take(frame_) : !ended_ && read();
        if (more) {
            changed();
            ++count_;
        }
        return more;
    }
    void read_ahead() override { ahead_.emplace(stream_); }

protected:
    tool::Picture picture() const override { return tool::unpack(frame_); }
    const tool::Surface* original() const override { return &frame_; }

private:
    // The frame that is shown stays when there is no further one, although part of one may have been read.
    bool read()
    {
        tool::Surface next = stream_.blank();
        ended_ = !stream_.read(next);
        if (!ended_)
            frame_ = std::move(next);
        return !ended_;
    }

    std::string name_;
    RawStream stream_;
    tool::Surface frame_;
    std::optional<Ahead> ahead_;
    int64_t count_ = 1;
    bool ended_ = false;
};

} // namespace

std::unique_ptr<Source> open_stream(const std::string& name, uint32_t format, tool::Size size)
{
    return std::make_unique<StreamSource>(name, format, size);
}

} // namespace view
