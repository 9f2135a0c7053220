#include "window.h"

#include "failure.h"
#include "stage.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <SDL.h>

namespace view {

namespace {

[[noreturn]] void fail() { throw tool::Failure("the window", SDL_GetError()); }

struct Deleter {
    void operator()(SDL_Window* window) const { SDL_DestroyWindow(window); }
    void operator()(SDL_Renderer* renderer) const { SDL_DestroyRenderer(renderer); }
    void operator()(SDL_Texture* texture) const { SDL_DestroyTexture(texture); }
};

struct Sdl {
    Sdl()
    {
        if (SDL_Init(SDL_INIT_VIDEO) != 0)
            fail();
    }
    Sdl(const Sdl&) = delete;
    Sdl& operator=(const Sdl&) = delete;
    ~Sdl() { SDL_Quit(); }
};

double now()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

class Window {
public:
    Window(Source& source, tool::Picture sprite, tool::Size size)
        : stage_(source, std::move(sprite), now),
          window_(SDL_CreateWindow("vexlor-view", SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED, size.width,
                                   size.height, SDL_WINDOW_RESIZABLE))
    {
        if (!window_)
            fail();
        SDL_SetWindowMinimumSize(window_.get(), 64, 64);
        renderer_.reset(SDL_CreateRenderer(window_.get(), -1, SDL_RENDERER_PRESENTVSYNC));
        if (!renderer_)
            renderer_.reset(SDL_CreateRenderer(window_.get(), -1, SDL_RENDERER_SOFTWARE));
        if (!renderer_)
            fail();
        SDL_StartTextInput();
        fit();
    }

    void run(int32_t rate)
    {
        double due = now();
        bool drawn = false;
        while (!stage_.model.quit) {
            const double time = now();
            const bool frame_due = !stage_.model.paused && time >= due;
            if (frame_due && stage_.model.source.advance()) {
                due = rate == 0 ? time : std::max(due + 1.0 / rate, time - 1.0 / rate);
                drawn = false;
            }
            if (!drawn) {
                stage_.draw();
                show();
                drawn = true;
            }
            // A still picture waits for a key; a stream looks for its next frame soon.
            SDL_Event event;
            if (SDL_WaitEventTimeout(&event, 4) == 0)
                continue;
            do
                handle(event);
            while (SDL_PollEvent(&event) != 0);
            drawn = false;
        }
    }

private:
    void fit()
    {
        tool::Size size;
        SDL_GetWindowSize(window_.get(), &size.width, &size.height);
        size = {std::max(size.width, 2), std::max(size.height, 1)};
        stage_.resize(size);
        texture_.reset(SDL_CreateTexture(renderer_.get(), SDL_PIXELFORMAT_RGB888, SDL_TEXTUREACCESS_STREAMING,
                                         size.width, size.height));
        if (!texture_)
            fail();
    }

    void show()
    {
        const vexlor_surface_desc& pixels = *stage_.canvas.pixels().desc();
        if (SDL_UpdateTexture(texture_.get(), nullptr, pixels.pixels, static_cast<int>(pixels.stride)) != 0)
            fail();
        SDL_RenderCopy(renderer_.get(), texture_.get(), nullptr, nullptr);
        SDL_RenderPresent(renderer_.get());
        SDL_SetWindowTitle(window_.get(), ("vexlor-view: " + stage_.model.source.title()).c_str());
    }

    void press(const std::string& word)
    {
        const auto known = std::ranges::find_if(keys, [&word](const Key& key) { return word == key.name; });
        if (known != keys.end())
            play(stage_.model, word);
        if (stage_.model.copy_calls) {
            const bool copied = SDL_SetClipboardText(stage_.sides[stage_.model.active].calls().c_str()) == 0;
            stage_.model.message = copied ? "The C calls are in the clipboard." : SDL_GetError();
            stage_.model.copy_calls = false;
        }
    }

    // Keys that give no text; what gives text comes as such, whatever the keyboard's layout.
    void handle_key(const SDL_Keysym& key)
    {
        const std::string shift = (key.mod & KMOD_SHIFT) != 0 ? "shift+" : "";
        switch (key.sym) {
        case SDLK_LEFT: return press(shift + "left");
        case SDLK_RIGHT: return press(shift + "right");
        case SDLK_UP: return press(shift + "up");
        case SDLK_DOWN: return press(shift + "down");
        case SDLK_TAB: return press("tab");
        case SDLK_ESCAPE: return press("escape");
        case SDLK_F1: return press("h");
        case SDLK_c:
            if ((key.mod & KMOD_CTRL) != 0)
                press("ctrl+c");
            return;
        default: return;
        }
    }

    void handle(const SDL_Event& event)
    {
        Model& model = stage_.model;
        const auto move = [&model](int x, int y) {
            play(model, "move:" + std::to_string(x) + "," + std::to_string(y));
        };
        switch (event.type) {
        case SDL_QUIT: model.quit = true; break;
        case SDL_WINDOWEVENT:
            if (event.window.event == SDL_WINDOWEVENT_SIZE_CHANGED)
                fit();
            break;
        case SDL_TEXTINPUT: press(std::strcmp(event.text.text, " ") == 0 ? "space" : event.text.text); break;
        case SDL_KEYDOWN: handle_key(event.key.keysym); break;
        case SDL_MOUSEMOTION: move(event.motion.x, event.motion.y); break;
        case SDL_MOUSEBUTTONDOWN:
            move(event.button.x, event.button.y);
            play(model, "press");
            break;
        case SDL_MOUSEBUTTONUP: play(model, "release"); break;
        case SDL_MOUSEWHEEL:
            if (event.wheel.y != 0)
                play(model, event.wheel.y > 0 ? "wheel:1" : "wheel:-1");
            break;
        default: break;
        }
    }

    Stage stage_;
    std::unique_ptr<SDL_Window, Deleter> window_;
    std::unique_ptr<SDL_Renderer, Deleter> renderer_;
    std::unique_ptr<SDL_Texture, Deleter> texture_;
};

} // namespace

void run_window(Source& source, tool::Picture sprite, tool::Size window, int32_t rate)
{
    const Sdl sdl;
    Window(source, std::move(sprite), window).run(rate);
}

} // namespace view
