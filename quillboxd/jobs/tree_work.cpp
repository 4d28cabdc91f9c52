#include "quillboxd/crypto/random.h"
#include "quillboxd/error.h"
#include "quillboxd/jobs/work.h"
#include "quillboxd/service.h"
#include "quillboxd/store/space.h"
#include "quillboxd/store/time_text.h"

namespace quillboxd {
namespace {

/// What the work on whole trees shares.
class TreeWork : public Work {
  public:
    TreeWork(Service& service, const Job& job)
        : job_(job),
          steps_(service.database),
          tree_(service.database, job.account),
          space_(service.database, job.account, service.quota) {}

  protected:
    Node requireItem(const JobItem& item) {
        auto node = tree_.find(item.node);
        if (!node) notFound("it is gone");
        return *std::move(node);
    }

    /// The folder that the job's items go to; throws where the item cannot go there.
    Node requireDestination(const JobItem& item) {
        auto folder = tree_.find(job_.destination.value_or(0));
        if (!folder) notFound("the folder where it goes is gone");
        for (const auto& step : tree_.path(*folder))
            if (step.id == item.node) conflict(Code::conflict, "a folder cannot go into itself");
        return *std::move(folder);
    }

    void settle(JobItem& item, const Node& folder, std::int64_t node, const std::string& name) {
        item.newNode = node;
        const auto path = namePath(tree_.path(folder));
        item.newPath = (path == "/" ? "" : path) + '/' + name;
    }

    const Job job_;
    OpenJobs steps_;
    Tree tree_;
    Space space_;
};

/// A copy shares its content with the original.
class Copying : public TreeWork {
  public:
    using TreeWork::TreeWork;

    void plan(JobItem& item) override {
        const auto node = requireItem(item);
        requireDestination(item);
        space_.requireRoom(node.isFile ? node.size : tree_.stats(node.id, true).size);
        item.total = steps_.planTree(item, job_.account);
    }

    void perform(JobItem& item) override {
        const auto step = steps_.step(item, item.done);
        if (item.done == 0) return copyTop(item);
        const auto original = tree_.find(step.node);
        const auto parent = steps_.copyOf(item, step.parent);
        if (!original || !parent) return;  // taken away meanwhile, by itself or with its folder
        if (!tree_.find(*parent)) notFound("the folder where it goes is gone");
        steps_.noteCopy(item, item.done, copy(*original, *parent, NameRule::rename).id);
    }

  private:
    void copyTop(JobItem& item) {
        const auto folder = requireDestination(item);
        const auto made = copy(requireItem(item), folder.id, job_.nameRule);
        steps_.noteCopy(item, 0, made.id);
        settle(item, folder, made.id, made.name);
    }

    Node copy(Node node, std::int64_t parent, NameRule rule) {
        node.id = randomId();
        node.parent = parent;
        node.name = tree_.chooseName(parent, node.name, node.isFile, rule);
        node.createdTime = timestamp();
        space_.requireRoom(node.size);
        tree_.insert(node, true);
        return node;
    }
};

/// A move is one step, however much the folder holds.
class Moving : public TreeWork {
  public:
    using TreeWork::TreeWork;

    void plan(JobItem& item) override { item.total = 1; }

    void perform(JobItem& item) override {
        const auto folder = requireDestination(item);
        const auto node = requireItem(item);
        auto name = node.name;
        if (node.parent != folder.id) {
            name = tree_.chooseName(folder.id, name, node.isFile, job_.nameRule);
            tree_.move(node.id, folder.id, name);
        }
        settle(item, folder, node.id, name);
    }
};

/// What a folder holds goes before the folder, so that a cancelled job leaves a whole tree.
class Removing : public TreeWork {
  public:
    using TreeWork::TreeWork;

    void plan(JobItem& item) override { item.total = steps_.planTree(item, job_.account); }

    void perform(JobItem& item) override {
        const auto step = steps_.step(item, item.total - 1 - item.done);
        const auto node = tree_.find(step.node);
        if (!node || node->parent != step.parent) return;  // gone, or moved to safety meanwhile
        if (!node->isFile && !tree_.isEmpty(node->id))
            conflict(Code::conflict, "something came into the folder \"" + node->name + "\" meanwhile");
        tree_.remove(node->id);
    }
};

}  // namespace

std::unique_ptr<Work> makeCopying(Service& service, const Job& job) {
    return std::make_unique<Copying>(service, job);
}

std::unique_ptr<Work> makeMoving(Service& service, const Job& job) {
    return std::make_unique<Moving>(service, job);
}

std::unique_ptr<Work> makeRemoving(Service& service, const Job& job) {
    return std::make_unique<Removing>(service, job);
}

}  // namespace quillboxd
