#include "Presenter.h"

namespace {
Presenter* installed = nullptr;
}

Presenter* Presenter::defaultPresenter()
{
    return installed;
}

void Presenter::setDefaultPresenter(Presenter* presenter)
{
    installed = presenter;
}
