// Photographs: one file, or those of a folder in the order of their names.
#include "failure.h"
#include "file.h"
#include "settings.h"
#include "source.h"

#include <algorithm>
#include <filesystem>
#include <vector>

namespace view {

namespace {

namespace fs = std::filesystem;

bool is_photo(const fs::path& path)
{
    std::string ending = path.extension().string();
    std::ranges::transform(ending, ending.begin(),
                           [](char c) { return c >= 'A' && c <= 'Z' ? char(c + 32) : c; });
    return ending == ".png" || ending == ".jpg" || ending == ".jpeg";
}

std::vector<std::string> photos_in(const std::string& folder)
{
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error))
        if (is_photo(entry->path()))
            names.push_back(entry->path().string());
    if (error)
        throw tool::Failure(folder, error.message());
    if (names.empty())
        throw tool::Failure(folder, "this folder holds no .png, .jpg or .jpeg file");
    std::ranges::sort(names);
    return names;
}

class Photos : public Source {
public:
    explicit Photos(std::vector<std::string> names) : names_(std::move(names)) { load(); }

    std::string title() const override
    {
        const std::string name =
            names_[at_] == "-" ? tool::shown("-") : fs::path(names_[at_]).filename().string();
        return names_.size() == 1
                   ? name
                   : name + " (" + std::to_string(at_ + 1) + " of " + std::to_string(names_.size()) + ")";
    }
    tool::Size size() const override { return picture_ ? picture_->size : tool::Size{640, 480}; }
    uint32_t format() const override { return source_for(picture_ && picture_->has_alpha); }
    const std::string& error() const { return error_; }

    bool step(int by) override
    {
        const size_t count = names_.size();
        at_ = (at_ + (by < 0 ? count - 1 : 1)) % count;
        load();
        return count > 1;
    }

protected:
    tool::Picture picture() const override
    {
        if (!picture_)
            throw std::runtime_error(error_);
        tool::Picture copy(picture_->size, picture_->has_alpha);
        std::copy_n(picture_->pixels.get(), copy.bytes(), copy.pixels.get());
        return copy;
    }

private:
    void load()
    {
        changed();
        picture_.reset();
        try {
            picture_ = tool::read_picture(names_[at_]);
        } catch (const tool::Failure& failure) {
            error_ = failure.what();
        }
    }

    std::vector<std::string> names_;
    size_t at_ = 0;
    std::optional<tool::Picture> picture_;
    std::string error_;
};

} // namespace

std::unique_ptr<Source> open_photos(const std::string& name)
{
    std::error_code ignored; // whatever it is, reading the file says so
    if (fs::is_directory(name, ignored))
        return std::make_unique<Photos>(photos_in(name));
    auto photo = std::make_unique<Photos>(std::vector{name});
    if (!photo->error().empty())
        throw std::runtime_error(photo->error());
    return photo;
}

} // namespace view
