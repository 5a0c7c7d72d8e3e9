#include <iostream>
#include <memory>
#include <runtime/TaskMgr.h>

struct Render : ITask
{
    explicit Render(int number) : page(number) { }
    void run() override { std::cout << "rendered page " << page << '\n'; }
    int page;
};

/// A thread of its own, which finishes what was pushed before it ends.
class Renderer final : public TaskMgr
{
public:
    ~Renderer()
    {
        m_drain = true;
        WaitTaskFinish(5000);
    }
};

int main()
{
    Renderer renderer;
    for (int page = 1; page <= 3; ++page)
        renderer.PushTask(std::make_shared<Render>(page));
}
