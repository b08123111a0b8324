// Placeholder: the suite's cases arrive with its area.
